#pragma once

#include "app/keychain/KeychainError.h"
#include "foundation/Task.h"
#include "platform/ports/SecretVault.h"
#include "shared/base/Error.h"

#include <optional>
#include <string>

namespace morvex {

/// This application's secrets in the vault of the system, by account. The vault may block, so each call runs
/// on the given executor and resumes where it was awaited. That executor is serial, so calls take effect in
/// the order in which they were made.
class Keychain {
  public:
    /// The service that all accounts belong to.
    static constexpr const char* service = "zz.bramwick.Morvex.mac";

    /// Both references outlive every call.
    Keychain(SecretVault& vault, Executor& storage) : vault_(vault), storage_(storage) {}

    /// Empty if there is no such item, the vault refuses, or the item is not UTF-8.
    [[nodiscard]] Task<std::optional<std::string>> read(std::string account) const;

    /// Removes the item. A refusal of the vault is not reported.
    [[nodiscard]] Task<void> remove(std::string account) const;

    /// Replaces the item; an empty value only removes it. Fails with `KeychainError`; the previous item is
    /// lost then.
    [[nodiscard]] Task<Result<void>> save(std::string value, std::string account) const;

  private:
    SecretVault& vault_;
    Executor& storage_;
};

} // namespace morvex
