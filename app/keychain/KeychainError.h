#pragma once

#include <cstdint>
#include <string>

namespace morvex {

/// The vault refused to keep a secret.
struct KeychainError {
    std::int32_t status = 0; ///< of the vault

    [[nodiscard]] std::string popis() const { return "Keychain error " + std::to_string(status); }

    bool operator==(const KeychainError&) const = default;
};

} // namespace morvex
