#pragma once

#include "shared-apple/IdentityStore.h"
#include "shared-apple/KeychainChyba.h"

#include <optional>

namespace morvex {

/// Removes the stored peer if it is still this one: another phone may have been paired since the caller
/// looked. For the executor of the store, on which nothing comes in between.
inline Result<void> smazatPar(IdentityStore& uloziste, const PairedPeer& protejsek) {
    auto kept = uloziste.nactiProtejsek();
    // A record that is damaged may go; who is behind a vault that does not answer is not known.
    if (!kept && kept.error().as<KeychainChyba>()) return fail(kept.error());
    bool isAnother = kept && *kept && (*kept)->pairID != protejsek.pairID;
    return isAnother ? Result<void>{} : uloziste.smazProtejsek();
}

/// Keeps what was kept before `odmitnuty`, if that one is kept now; the same may be asked for again. Two
/// phones may have answered to one pair, so the device counts too.
inline Result<void> vratitPar(IdentityStore& uloziste, const PairedPeer& odmitnuty,
                              const std::optional<PairedPeer>& predchozi) {
    auto kept = uloziste.nactiProtejsek();
    if (!kept && kept.error().as<KeychainChyba>()) return fail(kept.error());
    bool isOver =
        kept && (!*kept || (*kept)->pairID != odmitnuty.pairID || (*kept)->deviceID != odmitnuty.deviceID);
    if (isOver) return {};
    return predchozi ? uloziste.ulozProtejsek(*predchozi) : uloziste.smazProtejsek();
}

} // namespace morvex
