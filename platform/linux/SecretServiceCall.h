#pragma once

#include "platform/linux/CallDeadline.h"
#include "platform/linux/SecretServiceVault.h"

#include <libsecret/secret.h>

#include <expected>
#include <mutex>
#include <span>
#include <vector>

namespace morvex {

/// One call to the Secret Service: the service on the session bus and the time that all its steps share.
/// Made, used and destroyed by one thread; there is one at a time, so that the user never sees two prompts at
/// once, and the next one waits. `open` comes first, and nothing else when it fails. Failures are statuses of
/// `vaultStatus`.
class SecretServiceCall {
  public:
    template <class T> using Outcome = std::expected<T, std::int32_t>;
    using Item = GLibHandle<SecretItem>;

    struct Stops {
        std::stop_token asking; ///< no person is waited for any more
        std::stop_token ending; ///< nothing is waited for longer than two seconds
    };

    /// `settings` outlive the call.
    SecretServiceCall(const SecretServiceVault::Settings& settings, Stops stops);
    SecretServiceCall(const SecretServiceCall&) = delete;
    SecretServiceCall& operator=(const SecretServiceCall&) = delete;
    ~SecretServiceCall();

    Outcome<void> open();

    /// All items with these attributes, perhaps none; those that are locked come last.
    Outcome<std::vector<Item>> search(const std::string& service, const std::string& account);

    /// Unlocks what is locked among the items.
    Outcome<void> unlock(std::span<const Item> items);

    Outcome<Bytes> secretOf(SecretItem* item);
    Outcome<void> setSecret(SecretItem* item, ByteView bytes);
    Outcome<void> remove(SecretItem* item);

    /// Makes an item in the keyring of the user's choice, which is unlocked or made first.
    Outcome<void> create(const std::string& service, const std::string& account, ByteView bytes);

  private:
    Outcome<void> unlockObjects(const std::vector<GDBusProxy*>& objects);
    Outcome<void> openDefaultKeyring();
    Outcome<void> makeDefaultKeyring();
    /// Calls a method whose reply ends with the path of a prompt, "/" for none, and sees the prompt through.
    Outcome<void> ask(const char* method, GVariant* parameters, const GVariantType* replyType);
    [[nodiscard]] std::unexpected<std::int32_t> failure() const;

    const SecretServiceVault::Settings& settings_;
    std::stop_token asking_;
    std::unique_lock<std::mutex> turn_;
    CallDeadline deadline_;
    GLibError error_;
    GLibHandle<GDBusConnection> bus_;
    GLibHandle<SecretService> service_;
};

} // namespace morvex
