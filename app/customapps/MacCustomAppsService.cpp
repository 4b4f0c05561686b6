#include "app/customapps/MacCustomAppsService.h"

#include "foundation/Text.h"
#include "shared/base/Try.h"
#include "shared/wire/CustomAppLimits.h"
#include "shared/wire/Json.h"
#include "shared/wire/NormalizedAddress.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <utility>

namespace morvex {

namespace {

constexpr const char* metadataKey = "custom.apps.metadata";

const auto tokenAccount = &CustomToolCatalogue::tokenAccount;

StoredApp* find(std::vector<StoredApp>& apps, const std::string& id) {
    auto app = std::ranges::find(apps, id, &StoredApp::id);
    return app == apps.end() ? nullptr : &*app;
}

void addMacApp(std::vector<StoredApp>& apps, StoredApp app) {
    auto firstOfPhone = std::ranges::find_if_not(apps, &StoredApp::isFromMac);
    apps.insert(firstOfPhone, std::move(app));
}

std::vector<StoredApp> stored(const UserDefaults& defaults) {
    auto bytes = defaults.data(metadataKey);
    return bytes ? decode<std::vector<StoredApp>>(*bytes).value_or(std::vector<StoredApp>())
                 : std::vector<StoredApp>();
}

} // namespace

MacCustomAppsService::MacCustomAppsService(Services services)
    : services_(services),
      changes_(services.defaults),
      apps_(stored(services.defaults)),
      catalogue_({services.http, services.keychain, tokens_, services.workers, services.clock, services.seen,
                  services.scope.token()},
                 [this] { return active_; }) {
    outcomeChanged_ = catalogue_.onOutcome([this] { rowsChanged_.tell(); });
    newsChanged_ = services_.seen.onChange([this] { rowsChanged_.tell(); });
}

std::vector<AppSummary> MacCustomAppsService::apps() const {
    std::vector<AppSummary> rows;
    rows.reserve(apps_.size());
    for (const auto& app : apps_) rows.push_back(summaryOf(app));
    return rows;
}

AppSummary MacCustomAppsService::summaryOf(const StoredApp& app) const {
    const auto* outcome = catalogue_.outcome(app.id);
    return {app.id,
            app.name,
            app.endpoint,
            app.isEnabled(),
            !app.isFromMac(),
            outcome ? std::optional(*outcome) : std::nullopt,
            services_.seen.countNews(app.id),
            services_.seen.holdsChanges(app.id)};
}

Task<void> MacCustomAppsService::refresh() {
    const auto number = ++refreshes_;
    std::vector<StoredApp> asked;
    if (active_) std::ranges::copy_if(apps_, std::back_inserter(asked), &StoredApp::isEnabled);
    isToolKnown_ = isToolKnown_ || !catalogue_.tools().empty();
    const bool changesNothing = asked.empty() && !isToolKnown_;
    co_await catalogue_.refresh(std::move(asked));
    // A newer one tells when it has ended.
    if (number == refreshes_ && !changesNothing) tellChange();
}

void MacCustomAppsService::tellChange() {
    isToolKnown_ = !catalogue_.tools().empty();
    changed_.tell();
}

void MacCustomAppsService::appsChanged() {
    std::vector<std::string> ids;
    for (const auto& app : apps_) ids.push_back(app.id);
    services_.seen.prefer(ids);
    rowsChanged_.tell();
    refreshSoon();
}

void MacCustomAppsService::looked(const std::string& id, const std::vector<SeenTool>& shown) {
    services_.seen.looked(id, shown);
    if (services_.seen.holdsChanges(id)) refreshSoon();
}

std::optional<Sentence> MacCustomAppsService::problem() const {
    const auto& cause = services_.seen.problem();
    return cause ? std::optional(
                       "Co je vidět z nástrojů aplikací, se nepodařilo uložit: {duvod}"_sentence(*cause))
                 : std::nullopt;
}

void MacCustomAppsService::setHoldsChanges(const std::string& id, bool holds) {
    services_.seen.setHoldsChanges(id, holds);
    refreshSoon();
}

void MacCustomAppsService::setActive(bool active) {
    active_ = active;
    if (active_) return;
    catalogue_.clear();
    rowsChanged_.tell();
    tellChange();
}

Task<void> MacCustomAppsService::replacePhoneApps(std::vector<CompanionCustomApp> list) {
    auto entries = accepted(std::move(list));
    const auto turn = co_await tokens_.take();
    const bool isOtherToken = co_await keepTokens(entries);
    // The list is built only now, because the user may have changed an app while the keychain worked.
    std::vector<StoredApp> apps;
    std::ranges::copy_if(apps_, std::back_inserter(apps), &StoredApp::isFromMac);
    for (const auto& entry : entries) apps.push_back(fromPhone(entry));
    if (apps == apps_ && !isOtherToken && catalogue_.isAsking()) co_return;
    apps_ = std::move(apps);
    keep();
    // The phone understands the next status as the confirmation that its list is stored.
    co_await services_.defaults.saved();
    appsChanged();
}

std::vector<CompanionCustomApp> MacCustomAppsService::accepted(std::vector<CompanionCustomApp> list) const {
    std::vector<CompanionCustomApp> entries;
    std::set<std::string> taken;
    for (auto& entry : list) {
        if (entries.size() == customAppLimits::mostApps) break;
        entry.name = trim(entry.name);
        entry.endpoint = trim(entry.endpoint);
        if (!entry.isAcceptable() || hasMacApp(entry.id) || !taken.insert(entry.id).second) continue;
        entries.push_back(std::move(entry));
    }
    return entries;
}

StoredApp MacCustomAppsService::fromPhone(const CompanionCustomApp& entry) const {
    auto before = std::ranges::find(apps_, entry.id, &StoredApp::id);
    bool enabled = before == apps_.end() || before->isEnabled();
    return {entry.id, entry.name, entry.endpoint, enabled, StoredApp::fromIPhone};
}

Task<bool> MacCustomAppsService::keepTokens(std::vector<CompanionCustomApp> entries) {
    std::vector<std::string> gone;
    for (const auto& app : apps_)
        if (!app.isFromMac() && !std::ranges::count(entries, app.id, &CompanionCustomApp::id))
            gone.push_back(app.id);
    for (const auto& id : gone) co_await services_.keychain.remove(tokenAccount(id));
    bool isOther = false;
    for (const auto& entry : entries) {
        auto token = trim(entry.token);
        const auto account = tokenAccount(entry.id);
        const auto present = co_await services_.keychain.read(account);
        if (!token.empty() && present == token) continue;
        isOther = isOther || present.value_or("") != token;
        auto saved = co_await services_.keychain.save(std::move(token), account);
        if (!saved) co_await services_.keychain.remove(account);
    }
    co_return isOther;
}

Task<void> MacCustomAppsService::restoreToken(std::string account, std::optional<std::string> token) {
    const bool isRestored = token && co_await services_.keychain.save(*std::move(token), account);
    if (!isRestored) co_await services_.keychain.remove(account);
}

Task<Result<void>> MacCustomAppsService::save(std::optional<std::string> storedID, std::string name,
                                              std::string endpoint, std::string token) {
    name = trim(name);
    endpoint = trim(endpoint);
    token = trim(token);
    if (name.empty()) co_return fail(ServiceError{ServiceError::MissingName{}});
    if (!normalizedAddress(endpoint)) co_return fail(ServiceError{ServiceError::InvalidAddress{}});
    bool isNew = !storedID || !hasMacApp(*storedID);
    auto id = isNew ? "mac-" + lowerCase(services_.random.uuid().text()) : *storedID;
    const auto account = tokenAccount(id);
    const auto turn = co_await tokens_.take();
    std::optional<std::string> before;
    if (!isNew && !token.empty()) before = co_await services_.keychain.read(account);
    if (!token.empty()) CO_CHECK(co_await services_.keychain.save(token, account));
    auto saved = co_await keepOnceSaved([&](std::vector<StoredApp>& apps) {
        if (isNew)
            addMacApp(apps, {id, name, endpoint, true, StoredApp::fromMac});
        else if (auto* app = find(apps, id)) // it may have been removed while the keychain worked
            *app = {id, name, endpoint, app->isEnabled(), StoredApp::fromMac};
    });
    if (saved || token.empty()) co_return saved;
    // If the app is on the disk in spite of the failure, it keeps its token.
    co_await services_.defaults.saved();
    if (!services_.defaults.problem()) co_await restoreToken(account, before);
    co_return saved;
}

Task<Result<void>> MacCustomAppsService::setEnabled(std::string id, bool enabled) {
    auto* app = find(apps_, id);
    if (!app) co_return Result<void>{};
    if (enabled) {
        turningOn_.insert(id);
        auto saved = co_await keepOnceSaved([this, &id](std::vector<StoredApp>& apps) {
            auto* found = find(apps, id);
            if (found && turningOn_.contains(id)) found->enabled = true;
        });
        turningOn_.erase(id);
        co_return saved;
    }
    turningOn_.erase(id);
    app->enabled = false;
    keep();
    appsChanged();
    co_return Result<void>{};
}

Task<Result<void>> MacCustomAppsService::keepOnceSaved(std::function<void(std::vector<StoredApp>&)> change) {
    std::vector<StoredApp> apps;
    auto changed = [&] {
        apps = apps_;
        change(apps);
        DefaultsValues values;
        values.emplace(metadataKey, toBytes(encode(apps)));
        return values;
    };
    co_return co_await changes_.make(changed, [&] {
        apps_ = std::move(apps);
        appsChanged();
    });
}

Task<void> MacCustomAppsService::remove(std::string id) {
    if (!hasMacApp(id)) co_return;
    std::erase_if(apps_, [&id](const StoredApp& app) { return app.id == id; });
    services_.seen.forget(id);
    appsChanged();
    {
        const auto turn = co_await tokens_.take();
        co_await services_.keychain.remove(tokenAccount(id));
    }
    keep();
}

bool MacCustomAppsService::hasMacApp(const std::string& id) const {
    return std::ranges::any_of(apps_,
                               [&id](const StoredApp& app) { return app.isFromMac() && app.id == id; });
}

void MacCustomAppsService::keep() {
    services_.defaults.set(metadataKey, toBytes(encode(apps_)));
}

} // namespace morvex
