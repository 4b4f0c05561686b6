#pragma once

#include "shared-apple/IdentityStore.h"
#include "shared-apple/KeychainChyba.h"

#include <optional>

namespace morvex {

/// Keeps `misto` in place of the stored peer `protejsek`, or nothing; does nothing where another one or none
/// is stored: somebody may have paired since the caller looked. Two phones may have answered to one pair, so
/// the device counts too. The same may be asked for again. For the executor of the store, on which nothing
/// comes in between.
inline Result<void> nahraditPar(IdentityStore& uloziste, const PairedPeer& protejsek,
                                const std::optional<PairedPeer>& misto) {
    auto kept = uloziste.nactiProtejsek();
    // A record that is damaged may go; who is behind a vault that does not answer is not known.
    if (!kept && kept.error().as<KeychainChyba>()) return fail(kept.error());
    const bool isAnother =
        kept && (!*kept || (*kept)->pairID != protejsek.pairID || (*kept)->deviceID != protejsek.deviceID);
    if (isAnother) return {};
    return misto ? uloziste.ulozProtejsek(*misto) : uloziste.smazProtejsek();
}

} // namespace morvex
