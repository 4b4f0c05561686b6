#include "platform/linux/SecretServiceVault.h"

#include "foundation/Text.h"
#include "platform/linux/DisplayServer.h"
#include "platform/linux/SecretServiceCall.h"
#include "platform/posix/VaultRules.h"
#include "shared/base/Try.h"

namespace morvex {

namespace {

template <class T> using Outcome = SecretServiceCall::Outcome<T>;

/// D-Bus texts are UTF-8 without NUL; a truncated attribute would name another item.
bool isUsableName(const std::string& name) {
    return !name.empty() && !name.contains('\0') && isValidUtf8(name);
}

Outcome<void> open(SecretServiceCall& call, const std::string& service, const std::string& account) {
    if (!isUsableName(service) || !isUsableName(account)) return std::unexpected(vaultStatus::io);
    return call.open();
}

/// Returns at least one item, or fails.
Outcome<std::vector<SecretServiceCall::Item>>
existingItems(SecretServiceCall& call, const std::string& service, const std::string& account) {
    CHECK(open(call, service, account));
    TRY(auto, items, call.search(service, account));
    if (items.empty()) return std::unexpected(vaultStatus::itemNotFound);
    return items;
}

Outcome<Bytes> findBytes(SecretServiceCall& call, const std::string& service, const std::string& account) {
    TRY(auto, items, existingItems(call, service, account));
    auto first = std::span(items).first(1);
    CHECK(call.unlock(first));
    return call.secretOf(first.front().get());
}

Outcome<void> addItem(SecretServiceCall& call, const std::string& service, const std::string& account,
                      ByteView bytes) {
    CHECK(open(call, service, account));
    TRY(auto, items, call.search(service, account));
    if (!items.empty()) return std::unexpected(vaultStatus::duplicateItem);
    return call.create(service, account, bytes);
}

} // namespace

SecretServiceVault::Settings SecretServiceVault::Settings::ofThisSession() {
    Settings settings;
    settings.prompts = isThereADisplay() ? Prompts::allowed : Prompts::never;
    return settings;
}

void SecretServiceVault::stopAsking() {
    std::lock_guard lock(mutex_);
    asking_.request_stop();
    if (!ending_.stop_requested()) asking_ = {};
}

void SecretServiceVault::end() {
    std::lock_guard lock(mutex_);
    ending_.request_stop();
    asking_.request_stop();
}

SecretServiceCall SecretServiceVault::begin() const {
    std::unique_lock lock(mutex_);
    SecretServiceCall::Stops stops{asking_.get_token(), ending_.get_token()};
    lock.unlock();
    return {settings_, std::move(stops)};
}

template <class Change>
std::int32_t SecretServiceVault::changeItems(const std::string& service, const std::string& account,
                                             Change change) const {
    auto call = begin();
    auto items = existingItems(call, service, account);
    if (!items) return items.error();
    if (auto unlocked = call.unlock(*items); !unlocked) return unlocked.error();
    for (const auto& item : *items)
        if (Outcome<void> changed = change(call, item.get()); !changed) return changed.error();
    return vaultStatus::ok;
}

bool SecretServiceVault::answers() const {
    return begin().open().has_value();
}

SecretVault::Found SecretServiceVault::find(const std::string& service, const std::string& account) {
    auto call = begin();
    auto bytes = findBytes(call, service, account);
    if (!bytes) return {bytes.error(), {}};
    return {vaultStatus::ok, *std::move(bytes)};
}

std::int32_t SecretServiceVault::update(const std::string& service, const std::string& account,
                                        ByteView bytes) {
    if (bytes.size() > vaultRules::itemLimit) return vaultStatus::io;
    return changeItems(service, account, [bytes](SecretServiceCall& call, SecretItem* item) {
        return call.setSecret(item, bytes);
    });
}

std::int32_t SecretServiceVault::add(const std::string& service, const std::string& account, ByteView bytes) {
    if (bytes.size() > vaultRules::itemLimit) return vaultStatus::io;
    auto call = begin();
    auto added = addItem(call, service, account, bytes);
    return added ? vaultStatus::ok : added.error();
}

std::int32_t SecretServiceVault::remove(const std::string& service, const std::string& account) {
    return changeItems(service, account,
                       [](SecretServiceCall& call, SecretItem* item) { return call.remove(item); });
}

std::optional<Sentence> SecretServiceVault::text(std::int32_t status) const {
    return vaultRules::text(status);
}

} // namespace morvex
