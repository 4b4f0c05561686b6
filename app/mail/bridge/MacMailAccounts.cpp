#include "app/mail/bridge/MacMailAccounts.h"

#include "app/mail/bridge/MailScripts.h"
#include "foundation/Text.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace morvex {

namespace {

constexpr const char* selectedKey = "mail.selectedAccounts";
constexpr const char* configuredKey = "mail.selectionConfigured";
constexpr const char* defaultKey = "mail.defaultAccount";

DefaultsValues choice(const std::set<std::string>& selected, bool isConfigured) {
    DefaultsValues values;
    values.emplace(selectedKey, std::vector<DefaultsItem>(selected.begin(), selected.end()));
    values.emplace(configuredKey, isConfigured);
    return values;
}

bool contains(const std::vector<std::string>& names, const std::string& name) {
    return std::ranges::find(names, name) != names.end();
}

std::set<std::string> storedChoice(const UserDefaults& defaults) {
    const auto names = defaults.texts(selectedKey).value_or(std::vector<std::string>());
    return {names.begin(), names.end()};
}

} // namespace

MacMailAccounts::MacMailAccounts(Services services)
    : services_(services),
      changes_(services.defaults),
      selected_(storedChoice(services.defaults)),
      selectionConfigured_(services.defaults.boolean(configuredKey).value_or(false)),
      defaultAccount_(services.defaults.text(defaultKey)) {}

std::vector<std::string> MacMailAccounts::povolene() const {
    std::vector<std::string> allowed;
    std::ranges::copy_if(available_, std::back_inserter(allowed), [this](const std::string& name) {
        return !selectionConfigured_ || selected_.contains(name);
    });
    return allowed;
}

bool MacMailAccounts::isAllowed(const std::string& ucet) const {
    return contains(povolene(), ucet);
}

Task<void> MacMailAccounts::obnovit(std::stop_token stop) {
    const auto number = ++loads_;
    auto accounts = co_await services_.bridge.spustitSkript<std::vector<std::string>>(
        std::string(mailScripts::accounts), {}, MailBridge::timeLimit, std::move(stop));
    if (number != loads_) co_return;
    if (accounts)
        take(*std::move(accounts));
    else
        problem_ = accounts.error().popis();
    changed_.tell();
}

void MacMailAccounts::take(std::vector<std::string> accounts) {
    available_ = std::move(accounts);
    problem_.reset();
    if (available_.empty()) problem_ = MailChyba{MailChyba::AppleMailBezUctu{}}.popis();
    const auto isGone = [this](const std::string& name) { return !contains(available_, name); };
    std::erase_if(selected_, isGone);
    std::erase_if(turningOn_, isGone);
    if (defaultAccount_ && !isAllowed(*defaultAccount_)) defaultAccount_.reset();
    const auto allowed = povolene();
    if (!defaultAccount_ && allowed.size() == 1) defaultAccount_ = allowed.front();
    keep();
}

Task<Result<void>> MacMailAccounts::nastav(std::string ucet, bool povoleno) {
    if (povoleno) co_return co_await allow(std::move(ucet));
    forbid(ucet);
    co_return Result<void>{};
}

void MacMailAccounts::forbid(const std::string& ucet) {
    turningOn_.erase(ucet);
    selected_ = chosen();
    selectionConfigured_ = true;
    selected_.erase(ucet);
    if (defaultAccount_ == ucet) defaultAccount_.reset();
    keep();
    changed_.tell();
}

Task<Result<void>> MacMailAccounts::allow(std::string ucet) {
    turningOn_.insert(ucet);
    std::set<std::string> selected;
    auto chosenNow = [&] {
        selected = chosen();
        if (turningOn_.contains(ucet)) selected.insert(ucet);
        return choice(selected, true);
    };
    auto saved = co_await changes_.make(chosenNow, [&] {
        selected_ = std::move(selected);
        selectionConfigured_ = true;
    });
    turningOn_.erase(ucet);
    if (saved) changed_.tell();
    co_return saved;
}

std::set<std::string> MacMailAccounts::chosen() const {
    return selectionConfigured_ ? selected_ : std::set(available_.begin(), available_.end());
}

void MacMailAccounts::nastavVychozi(std::optional<std::string> ucet) {
    defaultAccount_ = ucet && !ucet->empty() ? std::move(ucet) : std::nullopt;
    keep();
    changed_.tell();
}

Result<std::optional<std::string>> MacMailAccounts::ucetProOdeslani(std::string_view jmeno) const {
    const auto allowed = povolene();
    if (jmeno.empty()) {
        if (defaultAccount_ && contains(allowed, *defaultAccount_)) return defaultAccount_;
        return allowed.size() == 1 ? std::optional(allowed.front()) : std::nullopt;
    }
    const auto found =
        std::ranges::find_if(allowed, [jmeno](const std::string& name) { return equalFolded(name, jmeno); });
    if (found == allowed.end()) return fail(Error{Error::AccountNotEnabled{std::string(jmeno)}});
    return std::optional(*found);
}

void MacMailAccounts::keep() {
    auto values = choice(selected_, selectionConfigured_);
    std::vector<std::string> removed;
    if (defaultAccount_)
        values.emplace(defaultKey, *defaultAccount_);
    else
        removed.emplace_back(defaultKey);
    services_.defaults.changeTogether(std::move(values), removed);
}

} // namespace morvex
