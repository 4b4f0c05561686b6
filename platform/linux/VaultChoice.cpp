#include "platform/linux/VaultChoice.h"

#include "foundation/AtomicFile.h"
#include "foundation/Text.h"
#include "platform/linux/VaultRules.h"

namespace morvex {

namespace {

constexpr std::string_view serviceName = "secret-service";
constexpr std::string_view filesName = "files";

} // namespace

VaultChoice::VaultChoice(const std::filesystem::path& dataHome, SecretServiceVault::Settings session)
    : memory_(dataHome / "Morvex" / "vault-backend"), service_(std::move(session)), files_(dataHome) {}

SecretVault::Found VaultChoice::find(const std::string& service, const std::string& account) {
    auto* vault = chosen();
    return vault ? vault->find(service, account) : Found{vaultStatus::notAvailable, {}};
}

std::int32_t VaultChoice::update(const std::string& service, const std::string& account, ByteView bytes) {
    auto* vault = chosen();
    return vault ? vault->update(service, account, bytes) : vaultStatus::notAvailable;
}

std::int32_t VaultChoice::add(const std::string& service, const std::string& account, ByteView bytes) {
    auto* vault = chosen();
    return vault ? vault->add(service, account, bytes) : vaultStatus::notAvailable;
}

std::int32_t VaultChoice::remove(const std::string& service, const std::string& account) {
    auto* vault = chosen();
    return vault ? vault->remove(service, account) : vaultStatus::notAvailable;
}

std::optional<std::string> VaultChoice::text(std::int32_t status) const {
    return vaultRules::text(status);
}

SecretVault::Place VaultChoice::place() {
    return chosen() == &files_ ? Place::privateFiles : Place::keyring;
}

SecretVault* VaultChoice::chosen() {
    std::lock_guard lock(mutex_);
    if (!chosen_) chosen_ = remembered();
    return chosen_;
}

/// The vault that was chosen before, or is now; null when the memory is unreadable or cannot be written.
SecretVault* VaultChoice::remembered() {
    constexpr std::size_t longest = 64;
    auto bytes = readWhole(memory_, longest);
    if (!bytes) return nullptr;
    if (!*bytes) return chooseNow();
    auto name = trim(asText(**bytes));
    if (name == serviceName) return &service_;
    if (name == filesName) return &files_;
    return nullptr;
}

SecretVault* VaultChoice::chooseNow() {
    bool useService = !files_.hasItems() && service_.answers();
    if (!writeAtomically(memory_, asBytes(useService ? serviceName : filesName))) return nullptr;
    if (useService) return &service_;
    return &files_;
}

} // namespace morvex
