#pragma once

#include "platform/ports/SecretVault.h"

#include <chrono>
#include <mutex>
#include <stop_token>
#include <string>

namespace morvex {

class SecretServiceCall;

/// Secrets in the desktop's keyring (freedesktop.org Secret Service), found by the attributes `service` and
/// `account`. Every call looks up the service anew on the bus that the environment names, so that a restarted
/// keyring is found again; a bus is never launched. Safe from any thread; a call blocks while a prompt is
/// shown.
class SecretServiceVault final : public SecretVault {
  public:
    /// Whether the keyring may ask the user to unlock it.
    enum class Prompts { allowed, never };

    struct Settings {
        Prompts prompts = Prompts::allowed;
        std::chrono::milliseconds timeLimit = std::chrono::minutes(2); ///< for a whole call once it runs

        /// From the environment: prompts are allowed only if there is a display.
        static Settings ofThisSession();
    };

    explicit SecretServiceVault(Settings settings = Settings::ofThisSession())
        : settings_(std::move(settings)) {}

    /// Whether a Secret Service runs on the bus, or could be started by it.
    [[nodiscard]] bool answers() const;

    Found find(const std::string& service, const std::string& account) override;
    std::int32_t update(const std::string& service, const std::string& account, ByteView bytes) override;
    std::int32_t add(const std::string& service, const std::string& account, ByteView bytes) override;
    std::int32_t remove(const std::string& service, const std::string& account) override;
    [[nodiscard]] std::optional<Sentence> text(std::int32_t status) const override;

    [[nodiscard]] Place place() override { return Place::keyring; }

    void stopAsking() override;
    void end() override;

  private:
    /// Waits until no other call is running.
    [[nodiscard]] SecretServiceCall begin() const;
    /// Applies `change` to every item of these names, should another program have made a second one.
    template <class Change>
    std::int32_t changeItems(const std::string& service, const std::string& account, Change change) const;

    Settings settings_;
    mutable std::mutex mutex_;
    std::stop_source asking_; ///< stops the current prompts
    std::stop_source ending_;
};

} // namespace morvex
