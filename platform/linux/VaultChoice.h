#pragma once

#include "platform/linux/FileVault.h"
#include "platform/linux/SecretServiceVault.h"

#include <filesystem>
#include <mutex>

namespace morvex {

/// The vault of this computer. Its first call chooses: the Secret Service when it answers, else files; files
/// too when some are there already. The choice stands in "<data home>/Morvex/vault-backend" and is never
/// revised, since another vault would hold another identity: while the chosen one cannot be reached, or the
/// choice cannot be read, every call answers `notAvailable`. Safe from any thread.
class VaultChoice final : public SecretVault {
  public:
    explicit VaultChoice(
        const std::filesystem::path& dataHome,
        SecretServiceVault::Settings session = SecretServiceVault::Settings::ofThisSession());

    Found find(const std::string& service, const std::string& account) override;
    std::int32_t update(const std::string& service, const std::string& account, ByteView bytes) override;
    std::int32_t add(const std::string& service, const std::string& account, ByteView bytes) override;
    std::int32_t remove(const std::string& service, const std::string& account) override;
    [[nodiscard]] std::optional<std::string> text(std::int32_t status) const override;
    /// Files once they were chosen.
    [[nodiscard]] Place place() override;

    void stopAsking() override { service_.stopAsking(); }

    void end() override { service_.end(); }

  private:
    SecretVault* chosen();
    SecretVault* remembered();
    SecretVault* chooseNow();

    std::filesystem::path memory_;
    SecretServiceVault service_;
    FileVault files_;
    std::mutex mutex_;
    SecretVault* chosen_ = nullptr;
};

} // namespace morvex
