#pragma once

#include "shared/base/Sentence.h"

#include <cstdint>

namespace morvex {

/// The vault refused to keep a secret.
struct KeychainError {
    std::int32_t status = 0; ///< status code of the vault

    [[nodiscard]] Sentence popis() const { return "Keychain error {stav}"_sentence(status); }

    bool operator==(const KeychainError&) const = default;
};

} // namespace morvex
