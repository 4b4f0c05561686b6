#include "platform/linux/VaultChoice.h"

#include "foundation/ProgramLog.h"
#include "foundation/Text.h"
#include "platform/posix/VaultRules.h"
#include "platform/posix/base/AtomicFile.h"

namespace morvex {

namespace {

constexpr std::string_view serviceName = "secret-service";
constexpr std::string_view filesName = "files";

} // namespace

VaultChoice::VaultChoice(const std::filesystem::path& dataHome, SecretServiceVault::Settings session)
    : memory_(dataHome / "Morvex" / "vault-backend"), service_(std::move(session)), files_(dataHome) {}

SecretVault::Found VaultChoice::find(const std::string& service, const std::string& account) {
    const auto vault = chosen();
    return vault ? (*vault)->find(service, account) : Found{vault.error(), {}};
}

std::int32_t VaultChoice::update(const std::string& service, const std::string& account, ByteView bytes) {
    const auto vault = chosen();
    return vault ? (*vault)->update(service, account, bytes) : vault.error();
}

std::int32_t VaultChoice::add(const std::string& service, const std::string& account, ByteView bytes) {
    const auto vault = chosen();
    return vault ? (*vault)->add(service, account, bytes) : vault.error();
}

std::int32_t VaultChoice::remove(const std::string& service, const std::string& account) {
    const auto vault = chosen();
    return vault ? (*vault)->remove(service, account) : vault.error();
}

std::optional<Sentence> VaultChoice::text(std::int32_t status) const {
    return vaultRules::text(status);
}

SecretVault::Place VaultChoice::place() {
    return chosen() == &files_ ? Place::privateFiles : Place::keyring;
}

VaultChoice::Choice VaultChoice::chosen() {
    std::lock_guard lock(mutex_);
    if (chosen_) return chosen_;
    auto choice = remembered();
    if (choice) chosen_ = *choice;
    return choice;
}

VaultChoice::Choice VaultChoice::remembered() {
    constexpr std::size_t longest = 64;
    auto bytes = readWhole(memory_, longest);
    if (!bytes) return refused(bytes.error());
    if (!*bytes) return chooseNow();
    auto name = trim(asText(**bytes));
    if (name == serviceName) return &service_;
    if (name == filesName) return &files_;
    return std::unexpected(vaultStatus::notAvailable);
}

VaultChoice::Choice VaultChoice::chooseNow() {
    const bool mayUseService = !files_.hasItems();
    const bool useService = mayUseService && service_.answers();
    // At the end of the program the wait for the service is shorter, so its silence must not decide the
    // choice.
    if (mayUseService && !useService && ends_) return std::unexpected(vaultStatus::notAvailable);
    auto written = writeAtomically(memory_, asBytes(useService ? serviceName : filesName));
    if (!written) return refused(written.error());
    if (useService) return &service_;
    return &files_;
}

VaultChoice::Choice VaultChoice::refused(const Error& error) {
    logCause("choosing where secrets are kept", error);
    return std::unexpected(vaultRules::statusOf(error));
}

} // namespace morvex
