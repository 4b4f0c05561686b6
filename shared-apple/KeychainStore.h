#pragma once

#include "platform/ports/SecretVault.h"
#include "shared-apple/IdentityStore.h"
#include "shared-apple/KeychainChyba.h"

#include <string>

namespace morvex {

/// Keeps identity and peer as three items of one service in the vault of the system. Refusals are
/// `KeychainChyba`.
class KeychainStore final : public IdentityStore {
  public:
    KeychainStore(SecretVault& vault, std::string sluzba) : vault_(vault), sluzba_(std::move(sluzba)) {}

    Result<std::shared_ptr<const DeviceIdentity>> nactiIdentitu() override;
    Result<void> ulozIdentitu(std::shared_ptr<const DeviceIdentity> identita) override;
    Result<void> smazIdentitu() override;
    Result<std::optional<PairedPeer>> nactiProtejsek() override;
    Result<void> ulozProtejsek(const PairedPeer& protejsek) override;
    Result<void> smazProtejsek() override;

  private:
    Result<std::optional<Bytes>> read(const std::string& account);
    Result<void> write(const std::string& account, ByteView bytes);
    Result<void> erase(const std::string& account);
    std::unexpected<Error> refusal(std::int32_t status, const char* verb, const std::string& account) const;

    SecretVault& vault_;
    std::string sluzba_;
};

} // namespace morvex
