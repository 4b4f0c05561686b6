#include "shared-apple/VaultItems.h"

#include "shared-apple/KeychainChyba.h"

namespace morvex {

Result<std::optional<Bytes>> VaultItems::read(const std::string& account) const {
    auto found = vault_.find(sluzba_, account);
    if (found.status == vaultStatus::itemNotFound) return std::nullopt;
    if (found.status != vaultStatus::ok) return refusal(found.status, KeychainChyba::Pokus::reading, account);
    return std::move(found.bytes);
}

Result<void> VaultItems::write(const std::string& account, ByteView bytes) const {
    if (vault_.update(sluzba_, account, bytes) == vaultStatus::ok) return {};
    // Tried whatever the status of the update was, since a missing item is reported by more than one status.
    auto status = vault_.add(sluzba_, account, bytes);
    if (status != vaultStatus::ok) return refusal(status, KeychainChyba::Pokus::writing, account);
    return {};
}

Result<void> VaultItems::erase(const std::string& account) const {
    auto status = vault_.remove(sluzba_, account);
    if (status == vaultStatus::ok || status == vaultStatus::itemNotFound) return {};
    return refusal(status, KeychainChyba::Pokus::erasing, account);
}

std::unexpected<Error> VaultItems::refusal(std::int32_t status, KeychainChyba::Pokus pokus,
                                           const std::string& account) const {
    return fail(KeychainChyba{status, pokus, account, vault_.text(status)});
}

} // namespace morvex
