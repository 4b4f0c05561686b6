#pragma once

#include "shared-apple/IdentityStore.h"

namespace morvex {

/// Removes the stored peer if it is still this one: another phone may have been paired since the caller
/// looked. For the executor of the store, on which nothing comes in between.
inline Result<void> smazatPar(IdentityStore& uloziste, const PairedPeer& protejsek) {
    auto kept = uloziste.nactiProtejsek();
    bool isAnother = kept && *kept && (*kept)->pairID != protejsek.pairID;
    return isAnother ? Result<void>{} : uloziste.smazProtejsek();
}

} // namespace morvex
