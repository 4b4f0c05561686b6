#include "phone/PhoneSettings.h"

#include "shared/base/Try.h"
#include "shared/wire/Json.h"

#include <string_view>
#include <tuple>

namespace morvex {

namespace {

const std::string preferencesAccount = "nastaveni.predvolby";
const std::string appsAccount = "nastaveni.aplikace";
constexpr std::string_view marked = "true";

const std::string& accountOf(PhoneSettings::Kind kind) {
    return kind == PhoneSettings::Kind::apps ? appsAccount : preferencesAccount;
}

/// The name of a vault item that exists while the Mac may lack the stored settings.
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
    CHECK(items_.write(markOf(kind), asBytes(marked)));
    return items_.write(accountOf(kind), asBytes(json));
}

bool PhoneSettings::isConfirmed(Kind kind) const {
    const auto mark = items_.read(markOf(kind));
    return !mark || !*mark;
}

Result<void> PhoneSettings::forgetConfirmations() {
    for (auto kind : kinds) {
        const auto kept = items_.read(accountOf(kind));
        if (kept && !*kept) continue;
        CHECK(items_.write(markOf(kind), asBytes(marked)));
    }
    return {};
}

void PhoneSettings::confirm(Kind kind) {
    std::ignore = items_.erase(markOf(kind));
}

template <class Record> Result<Record> PhoneSettings::read(const std::string& account) const {
    TRY(const auto, bytes, items_.read(account));
    if (!bytes) return Record{};
    return decode<Record>(*bytes);
}

} // namespace morvex
