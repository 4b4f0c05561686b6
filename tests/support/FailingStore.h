#pragma once

#include "shared-apple/PametoveUloziste.h"

#include <functional>
#include <optional>
#include <utility>

namespace morvex {

/// An identity store that fails when the test demands it.
class FailingStore final : public IdentityStore {
  public:
    Result<std::shared_ptr<const DeviceIdentity>> nactiIdentitu() override {
        ++loads;
        if (failLoad) return fail(*failLoad);
        return held.nactiIdentitu();
    }

    Result<void> ulozIdentitu(std::shared_ptr<const DeviceIdentity> identita) override {
        if (failSave) return fail(*failSave);
        return held.ulozIdentitu(std::move(identita));
    }

    Result<void> smazIdentitu() override { return held.smazIdentitu(); }

    Result<std::optional<PairedPeer>> nactiProtejsek() override {
        if (onPeerLoad) onPeerLoad();
        if (failPeerLoad) return fail(*failPeerLoad);
        return held.nactiProtejsek();
    }

    Result<void> ulozProtejsek(const PairedPeer& protejsek) override {
        ++peerSaves;
        if (failSave) return fail(*failSave);
        return held.ulozProtejsek(protejsek);
    }

    Result<void> smazProtejsek() override {
        if (failDelete) return fail(*failDelete);
        return held.smazProtejsek();
    }

    int peerSaves = 0; ///< including failed ones
    int loads = 0;     ///< of the identity
    std::function<void()> onPeerLoad;
    std::optional<Error> failLoad;
    std::optional<Error> failPeerLoad;
    std::optional<Error> failSave;
    std::optional<Error> failDelete;
    PametoveUloziste held;
};

} // namespace morvex
