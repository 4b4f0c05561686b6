#pragma once

#include "app/keychain/KeychainError.h"
#include "foundation/Task.h"
#include "platform/ports/SecretVault.h"
#include "shared/base/Error.h"

#include <optional>
#include <string>

namespace morvex {

/// The secrets of this application's services, by account, in the vault of the system. The vault may block,
/// so each call works on the executor that was given and resumes where it was awaited. That executor is
/// serial: calls take effect in the order in which they were made.
class Keychain {
  public:
    /// The service under which all accounts lie.
    static constexpr const char* service = "zz.bramwick.Morvex.mac";

    /// Both outlive every call.
    Keychain(SecretVault& vault, Executor& storage) : vault_(vault), storage_(storage) {}

    /// Nothing when there is no such item, when the vault refuses, or when the item is not UTF-8.
    [[nodiscard]] Task<std::optional<std::string>> read(std::string account) const;

    /// Whether the vault did it or refused is all the same to the caller.
    [[nodiscard]] Task<void> remove(std::string account) const;

    /// Replaces the item; an empty value only removes it. Fails with `KeychainError`; the item that was there
    /// before is gone then.
    [[nodiscard]] Task<Result<void>> save(std::string value, std::string account) const;

  private:
    SecretVault& vault_;
    Executor& storage_;
};

} // namespace morvex
