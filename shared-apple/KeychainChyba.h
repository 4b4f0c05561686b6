#pragma once

#include "platform/ports/SecretVault.h"
#include "shared/base/Error.h"

#include <cstdint>
#include <optional>
#include <string>

namespace morvex {

/// The vault refused.
struct KeychainChyba {
    std::int32_t stav = 0;
    std::string co;                   ///< what was being done, such as "čtení parovani.protejsek"
    std::optional<std::string> slova; ///< the platform's words for `stav`

    [[nodiscard]] std::string popis() const {
        return "Trezor odmítl " + co + ": " + slova.value_or("kód " + std::to_string(stav));
    }

    /// Nobody unlocked it: not asked, asked in vain, or by a prompt that was closed.
    [[nodiscard]] bool jeZamceno() const {
        return stav == vaultStatus::interactionNotAllowed || stav == vaultStatus::userCanceled;
    }

    bool operator==(const KeychainChyba&) const = default;
};

/// Whether the failure is a vault that nobody unlocked.
inline bool jeZamceno(const Error& error) {
    const auto* refusal = error.as<KeychainChyba>();
    return refusal && refusal->jeZamceno();
}

} // namespace morvex
