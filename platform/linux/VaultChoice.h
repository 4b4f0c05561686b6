#pragma once

#include "platform/linux/SecretServiceVault.h"
#include "platform/posix/FileVault.h"

#include <atomic>
#include <expected>
#include <filesystem>
#include <mutex>

namespace morvex {

/// The vault of this computer, chosen by the first call: files if some exist, else the Secret Service if it
/// answers, else files. The choice is stored in "<data home>/Morvex/vault-backend" and never revised, since
/// another vault would hold another identity: while the chosen vault cannot be reached, or the choice cannot
/// be read or stored, every call is refused. Safe from any thread.
class VaultChoice final : public SecretVault {
  public:
    explicit VaultChoice(
        const std::filesystem::path& dataHome,
        SecretServiceVault::Settings session = SecretServiceVault::Settings::ofThisSession());

    Found find(const std::string& service, const std::string& account) override;
    std::int32_t update(const std::string& service, const std::string& account, ByteView bytes) override;
    std::int32_t add(const std::string& service, const std::string& account, ByteView bytes) override;
    std::int32_t remove(const std::string& service, const std::string& account) override;
    [[nodiscard]] std::optional<Sentence> text(std::int32_t status) const override;
    /// `privateFiles` if files were chosen.
    [[nodiscard]] Place place() override;

    void stopAsking() override { service_.stopAsking(); }

    void end() override {
        ends_ = true;
        service_.end();
    }

  private:
    /// Or the status with which every call is refused.
    using Choice = std::expected<SecretVault*, std::int32_t>;

    Choice chosen();
    /// The vault chosen earlier, or chosen now.
    Choice remembered();
    Choice chooseNow();
    static Choice refused(const Error& error);

    std::filesystem::path memory_;
    SecretServiceVault service_;
    FileVault files_;
    std::mutex mutex_;
    SecretVault* chosen_ = nullptr;
    std::atomic<bool> ends_ = false;
};

} // namespace morvex
