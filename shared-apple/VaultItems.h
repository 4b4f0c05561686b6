#pragma once

#include "platform/ports/SecretVault.h"
#include "shared-apple/KeychainChyba.h"
#include "shared/base/Error.h"

#include <optional>
#include <string>

namespace morvex {

/// The items of one service in the vault, which outlives this object. Refusals are `KeychainChyba`. As the
/// vault, its calls may block.
class VaultItems {
  public:
    VaultItems(SecretVault& vault, std::string sluzba) : vault_(vault), sluzba_(std::move(sluzba)) {}

    /// Nothing when there is no such item.
    [[nodiscard]] Result<std::optional<Bytes>> read(const std::string& account) const;
    /// In place of the one before, if there is one.
    Result<void> write(const std::string& account, ByteView bytes) const;
    /// Harmless when there is no such item.
    Result<void> erase(const std::string& account) const;

  private:
    [[nodiscard]] std::unexpected<Error> refusal(std::int32_t status, KeychainChyba::Pokus pokus,
                                                 const std::string& account) const;

    SecretVault& vault_;
    std::string sluzba_;
};

} // namespace morvex
