#pragma once

#include "platform/ports/SecretVault.h"
#include "shared-apple/KeychainChyba.h"
#include "shared/base/Error.h"

#include <optional>
#include <string>

namespace morvex {

/// The items of one service in the vault. The vault must outlive this object. A refusal is a `KeychainChyba`.
/// Calls may block, as those of the vault.
class VaultItems {
  public:
    VaultItems(SecretVault& vault, std::string sluzba) : vault_(vault), sluzba_(std::move(sluzba)) {}

    /// Returns nothing when the item does not exist.
    [[nodiscard]] Result<std::optional<Bytes>> read(const std::string& account) const;
    /// Replaces an existing item.
    Result<void> write(const std::string& account, ByteView bytes) const;
    /// Harmless when the item does not exist.
    Result<void> erase(const std::string& account) const;

  private:
    [[nodiscard]] std::unexpected<Error> refusal(std::int32_t status, KeychainChyba::Pokus pokus,
                                                 const std::string& account) const;

    SecretVault& vault_;
    std::string sluzba_;
};

} // namespace morvex
