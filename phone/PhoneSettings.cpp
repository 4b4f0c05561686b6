#include "phone/PhoneSettings.h"

#include "shared-apple/KeychainChyba.h"
#include "shared/wire/Json.h"

namespace morvex {

namespace {

const std::string preferencesAccount = "nastaveni.predvolby";
const std::string appsAccount = "nastaveni.aplikace";
const std::string unconfirmedAccount = "nastaveni.nepotvrzeno";

} // namespace

Result<CompanionPreferences> PhoneSettings::preferences() const {
    return read<CompanionPreferences>(preferencesAccount);
}

Result<std::vector<CompanionCustomApp>> PhoneSettings::apps() const {
    return read<std::vector<CompanionCustomApp>>(appsAccount);
}

Result<void> PhoneSettings::keep(const CompanionPreferences& preferences) {
    return write(preferencesAccount, encode(preferences));
}

Result<void> PhoneSettings::keep(const std::vector<CompanionCustomApp>& apps) {
    return write(appsAccount, encode(apps));
}

bool PhoneSettings::isUnconfirmed() const {
    return vault_.find(service_, unconfirmedAccount).status == vaultStatus::ok;
}

Result<void> PhoneSettings::forgetConfirmation() {
    return write(unconfirmedAccount, "true");
}

void PhoneSettings::confirm() {
    vault_.remove(service_, unconfirmedAccount);
}

template <class Record> Result<Record> PhoneSettings::read(const std::string& account) const {
    auto found = vault_.find(service_, account);
    if (found.status == vaultStatus::itemNotFound) return Record{};
    if (found.status != vaultStatus::ok)
        return fail(KeychainChyba{found.status, "čtení " + account, vault_.text(found.status)});
    return decode<Record>(found.bytes);
}

Result<void> PhoneSettings::write(const std::string& account, const std::string& json) {
    auto status = vault_.update(service_, account, asBytes(json));
    if (status == vaultStatus::itemNotFound) status = vault_.add(service_, account, asBytes(json));
    if (status == vaultStatus::ok) return {};
    return fail(KeychainChyba{status, "zápis " + account, vault_.text(status)});
}

} // namespace morvex
