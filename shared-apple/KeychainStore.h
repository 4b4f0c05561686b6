#pragma once

#include "shared-apple/IdentityStore.h"
#include "shared-apple/VaultItems.h"

#include <string>

namespace morvex {

/// Keeps identity and peer as three items of one service in the system's vault. A refusal of the vault is a
/// `KeychainChyba`.
class KeychainStore final : public IdentityStore {
  public:
    KeychainStore(SecretVault& vault, std::string sluzba) : items_(vault, std::move(sluzba)) {}

    Result<std::shared_ptr<const DeviceIdentity>> nactiIdentitu() override;
    Result<void> ulozIdentitu(std::shared_ptr<const DeviceIdentity> identita) override;
    Result<void> smazIdentitu() override;
    Result<std::optional<PairedPeer>> nactiProtejsek() override;
    Result<void> ulozProtejsek(const PairedPeer& protejsek) override;
    Result<void> smazProtejsek() override;

  private:
    VaultItems items_;
};

} // namespace morvex
