#pragma once

#include "shared-apple/IdentityStore.h"

#include <mutex>

namespace morvex {

/// Keeps identity and peer only as long as this object lives. For tests; the programs use a lasting store.
/// Never fails; safe from any thread.
class PametoveUloziste final : public IdentityStore {
  public:
    Result<std::shared_ptr<const DeviceIdentity>> nactiIdentitu() override {
        std::lock_guard lock(zamek_);
        return identita_;
    }

    Result<void> ulozIdentitu(std::shared_ptr<const DeviceIdentity> identita) override {
        std::lock_guard lock(zamek_);
        identita_ = std::move(identita);
        return {};
    }

    Result<void> smazIdentitu() override { return ulozIdentitu(nullptr); }

    Result<std::optional<PairedPeer>> nactiProtejsek() override {
        std::lock_guard lock(zamek_);
        return protejsek_;
    }

    Result<void> ulozProtejsek(const PairedPeer& protejsek) override {
        std::lock_guard lock(zamek_);
        protejsek_ = protejsek;
        return {};
    }

    Result<void> smazProtejsek() override {
        std::lock_guard lock(zamek_);
        protejsek_.reset();
        return {};
    }

  private:
    std::mutex zamek_;
    std::shared_ptr<const DeviceIdentity> identita_;
    std::optional<PairedPeer> protejsek_;
};

} // namespace morvex
