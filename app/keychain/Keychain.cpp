#include "app/keychain/Keychain.h"

#include "foundation/Text.h"

#include <utility>

namespace morvex {

Task<std::optional<std::string>> Keychain::read(std::string account) const {
    auto* vault = &vault_;
    auto find = [vault, account = std::move(account)] { return vault->find(service, account); };
    auto found = co_await runOn(storage_, std::move(find));
    if (found.status != vaultStatus::ok || !isValidUtf8(asText(found.bytes))) co_return std::nullopt;
    co_return std::string(asText(found.bytes));
}

Task<void> Keychain::remove(std::string account) const {
    auto* vault = &vault_;
    auto remove = [vault, account = std::move(account)] { return vault->remove(service, account); };
    (void)co_await runOn(storage_, std::move(remove));
}

Task<Result<void>> Keychain::save(std::string value, std::string account) const {
    auto* vault = &vault_;
    auto replace = [vault, value = std::move(value), account = std::move(account)] {
        (void)vault->remove(service, account);
        return value.empty() ? vaultStatus::ok : vault->add(service, account, asBytes(value));
    };
    auto status = co_await runOn(storage_, std::move(replace));
    if (status != vaultStatus::ok) co_return fail(KeychainError{status});
    co_return Result<void>{};
}

} // namespace morvex
