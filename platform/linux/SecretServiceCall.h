#pragma once

#include "platform/linux/CallDeadline.h"
#include "platform/linux/SecretServiceVault.h"

#include <libsecret/secret.h>

#include <expected>
#include <mutex>
#include <span>
#include <vector>

namespace morvex {

/// One call to the Secret Service: the service on the session bus, and the time limit shared by all steps.
/// Created, used and destroyed by one thread. Calls run one at a time, so that the user never sees two
/// prompts at once. Call `open` first, and nothing else if it fails. Failures are statuses of `vaultStatus`.
class SecretServiceCall {
  public:
    template <class T> using Outcome = std::expected<T, std::int32_t>;
    using Item = GLibHandle<SecretItem>;

    struct Stops {
        std::stop_token asking; ///< no longer wait for the user
        std::stop_token ending; ///< wait at most two more seconds for anything
    };

    /// `settings` must outlive the call.
    SecretServiceCall(const SecretServiceVault::Settings& settings, Stops stops);
    SecretServiceCall(const SecretServiceCall&) = delete;
    SecretServiceCall& operator=(const SecretServiceCall&) = delete;
    ~SecretServiceCall();

    Outcome<void> open();

    /// All items with these attributes, possibly none; locked items come last.
    Outcome<std::vector<Item>> search(const std::string& service, const std::string& account);

    /// Unlocks the locked ones of the items.
    Outcome<void> unlock(std::span<const Item> items);

    Outcome<Bytes> secretOf(SecretItem* item);
    Outcome<void> setSecret(SecretItem* item, ByteView bytes);
    Outcome<void> remove(SecretItem* item);

    /// Creates an item in the user's default keyring, which is unlocked or created first.
    Outcome<void> create(const std::string& service, const std::string& account, ByteView bytes);

  private:
    Outcome<void> unlockObjects(const std::vector<GDBusProxy*>& objects);
    Outcome<void> openDefaultKeyring();
    Outcome<void> makeDefaultKeyring();
    /// Calls a method whose reply ends with the path of a prompt ("/" if there is none), and waits for the
    /// answer to the prompt.
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
