#pragma once

#include "shared-apple/IdentityStore.h"
#include "shared-apple/KeychainChyba.h"

#include <optional>

namespace morvex {

/// Replaces the stored peer `protejsek` by `replacement`, or deletes it if there is no `replacement`. Does
/// nothing if another peer or none is stored, because somebody may have paired since the caller looked. Two
/// phones may have answered to one pair, so the device is compared too. The call may be repeated. It must run
/// on the executor of the store, so that nothing happens between reading and writing.
inline Result<void> replacePeer(IdentityStore& uloziste, const PairedPeer& protejsek,
                                const std::optional<PairedPeer>& replacement) {
    auto kept = uloziste.nactiProtejsek();
    // A damaged record may be replaced. If the vault does not answer, it is unknown who is stored.
    if (!kept && kept.error().as<KeychainChyba>()) return fail(kept.error());
    const bool isAnother =
        kept && (!*kept || (*kept)->pairID != protejsek.pairID || (*kept)->deviceID != protejsek.deviceID);
    if (isAnother) return {};
    return replacement ? uloziste.ulozProtejsek(*replacement) : uloziste.smazProtejsek();
}

} // namespace morvex
