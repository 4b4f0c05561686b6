#include "platform/posix/VaultRules.h"

#include "platform/ports/SecretVault.h"
#include "shared/base/SystemError.h"

namespace morvex {

std::int32_t vaultRules::statusOf(const Error& error) {
    const auto code = systemCode(error);
    return code > 0 ? vaultStatus::posixBase + code : vaultStatus::io;
}

std::optional<Sentence> vaultRules::text(std::int32_t status) {
    if (status > vaultStatus::posixBase) return SystemError{status - vaultStatus::posixBase}.popis();
    switch (status) {
    case vaultStatus::itemNotFound:
        return "položka neexistuje"_sentence;
    case vaultStatus::interactionNotAllowed:
        return "trezor je zamčený"_sentence;
    case vaultStatus::userCanceled:
        return "uživatel odemčení zrušil"_sentence;
    case vaultStatus::notAvailable:
        return "trezor není dostupný"_sentence;
    case vaultStatus::duplicateItem:
        return "položka už existuje"_sentence;
    case vaultStatus::io:
        return "položku nejde číst nebo zapsat"_sentence;
    default:
        return std::nullopt;
    }
}

} // namespace morvex
