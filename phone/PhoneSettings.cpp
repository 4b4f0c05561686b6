#include "phone/PhoneSettings.h"

#include "shared-apple/KeychainChyba.h"
#include "shared/wire/Json.h"

namespace morvex {

namespace {

const std::string preferencesAccount = "nastaveni.predvolby";
const std::string appsAccount = "nastaveni.aplikace";

const std::string& accountOf(PhoneSettings::Kind kind) {
    return kind == PhoneSettings::Kind::apps ? appsAccount : preferencesAccount;
}

/// There is such an item while the Mac may not have what is kept.
std::string markOf(PhoneSettings::Kind kind) {
    return accountOf(kind) + ".nepotvrzeno";
}

} // namespace

Result<CompanionPreferences> PhoneSettings::preferences() const {
    return read<CompanionPreferences>(preferencesAccount);
}

Result<std::vector<CompanionCustomApp>> PhoneSettings::apps() const {
    return read<std::vector<CompanionCustomApp>>(appsAccount);
}

Result<void> PhoneSettings::keep(const CompanionPreferences& preferences) {
    return keep(Kind::preferences, encode(preferences));
}

Result<void> PhoneSettings::keep(const std::vector<CompanionCustomApp>& apps) {
    return keep(Kind::apps, encode(apps));
}

Result<void> PhoneSettings::keep(Kind kind, const std::string& json) {
    if (auto marked = write(markOf(kind), "true"); !marked) return marked;
    return write(accountOf(kind), json);
}

bool PhoneSettings::isConfirmed(Kind kind) const {
    return vault_.find(service_, markOf(kind)).status != vaultStatus::ok;
}

Result<void> PhoneSettings::forgetConfirmations() {
    for (auto kind : kinds) {
        if (vault_.find(service_, accountOf(kind)).status == vaultStatus::itemNotFound) continue;
        if (auto marked = write(markOf(kind), "true"); !marked) return marked;
    }
    return {};
}

void PhoneSettings::confirm(Kind kind) {
    vault_.remove(service_, markOf(kind));
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
