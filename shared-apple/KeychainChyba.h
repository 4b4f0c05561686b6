#pragma once

#include "platform/ports/SecretVault.h"
#include "shared/base/Error.h"
#include "shared/base/Sentence.h"

#include <cstdint>
#include <optional>
#include <string>

namespace morvex {

/// The vault refused a request.
struct KeychainChyba {
    enum class Pokus { reading, writing, erasing };

    std::int32_t stav = 0;
    Pokus pokus = Pokus::reading;
    std::string ucet;              ///< the item, such as "parovani.protejsek"
    std::optional<Sentence> words; ///< the platform's words for `stav`

    [[nodiscard]] Sentence popis() const;

    /// True when the vault stayed locked: the user was not asked, did not answer, or closed the prompt.
    [[nodiscard]] bool isLocked() const {
        return stav == vaultStatus::interactionNotAllowed || stav == vaultStatus::userCanceled;
    }

    bool operator==(const KeychainChyba&) const = default;
};

/// Whether the cause of the failure is a locked vault.
inline bool isLocked(const Error& error) {
    const auto* refusal = error.as<KeychainChyba>();
    return refusal && refusal->isLocked();
}

} // namespace morvex
