#include "app/mail/MacSMTPService.h"

#include "app/mail/MacSMTPServiceError.h"
#include "app/mail/protocol/MacSMTPClient.h"
#include "foundation/Executor.h"
#include "foundation/LimitedStop.h"
#include "foundation/Text.h"
#include "shared/base/Try.h"
#include "shared/wire/Json.h"

#include <algorithm>
#include <iterator>
#include <span>
#include <utility>

namespace morvex {

namespace {

constexpr const char* accountsKey = "smtp.accounts.v1";
constexpr const char* defaultKey = "smtp.defaultAccount.v1";

/// Leaves room for those that do not match.
constexpr std::size_t headersForEachMessage = 5;

std::string passwordAccount(const std::string& id) {
    return "smtp.password." + id;
}

const MacSMTPAccount* find(const std::vector<MacSMTPAccount>& accounts, const std::string& id) {
    const auto account = std::ranges::find(accounts, id, &MacSMTPAccount::id);
    return account == accounts.end() ? nullptr : &*account;
}

Result<MacSMTPAccount> pick(const std::vector<MacSMTPAccount>& accounts,
                            const std::optional<std::string>& defaultID,
                            const std::optional<std::string>& name) {
    if (name && !name->empty()) {
        const auto wanted = fold(*name);
        for (const auto& account : accounts)
            for (const auto* text : {&account.id, &account.label, &account.address})
                if (fold(*text) == wanted) return account;
        return fail(MacSMTPServiceError{MacSMTPServiceError::UnknownAccount{*name}});
    }
    if (const auto* account = defaultID ? find(accounts, *defaultID) : nullptr) return *account;
    if (accounts.size() == 1) return accounts.front();
    if (accounts.empty()) return fail(MacSMTPServiceError{MacSMTPServiceError::NoAccount{}});
    return fail(MacSMTPServiceError{MacSMTPServiceError::ChooseDefault{}});
}

std::vector<MacSMTPAccount> complete(std::vector<MacSMTPAccount> accounts) {
    std::erase_if(accounts, [](const MacSMTPAccount& account) { return !account.isComplete(); });
    return accounts;
}

Task<Result<std::vector<MacIMAPMessage>>> newest(MacIMAPClient& client, bool onlyUnread, std::size_t count) {
    CO_CHECK(co_await client.select());
    CO_TRY(auto, uids, co_await client.search(onlyUnread));
    uids.resize(std::min(uids.size(), count));
    co_return co_await client.fetchHeaders(std::move(uids));
}

Task<Result<std::string>> textOf(MacIMAPClient& client, std::uint32_t uid) {
    CO_CHECK(co_await client.select());
    CO_TRY(auto, text, co_await client.fetchBody(uid));
    if (!text) co_return fail(MacSMTPServiceError{MacSMTPServiceError::NoMessage{}});
    co_return *std::move(text);
}

/// The first `count` of those whose sender or subject has the folded text.
std::vector<MacIMAPMessage> matching(std::vector<MacIMAPMessage> messages, const std::string& wanted,
                                     std::size_t count) {
    std::vector<MacIMAPMessage> found;
    for (auto& message : messages) {
        if (found.size() == count) break;
        const bool matches = wanted.empty() || fold(message.from + " " + message.subject).contains(wanted);
        if (matches) found.push_back(std::move(message));
    }
    return found;
}

} // namespace

void MacSMTPService::Settings::applyDefaultRule() {
    if (defaultID && !find(accounts, *defaultID)) defaultID.reset();
    if (!defaultID && accounts.size() == 1) defaultID = accounts.front().id;
}

MacSMTPService::MacSMTPService(Services services)
    : services_(std::move(services)), settings_(stored(services_.defaults)), changes_(services_.defaults) {}

MacSMTPService::Settings MacSMTPService::stored(const UserDefaults& defaults) {
    Settings settings{{}, defaults.text(defaultKey)};
    if (const auto bytes = defaults.data(accountsKey))
        settings.accounts =
            decode<std::vector<MacSMTPAccount>>(*bytes).value_or(std::vector<MacSMTPAccount>());
    settings.applyDefaultRule();
    return settings;
}

DefaultsValues MacSMTPService::values(const Settings& settings) {
    DefaultsValues values;
    values.emplace(accountsKey, toBytes(encode(settings.accounts)));
    if (settings.defaultID) values.emplace(defaultKey, *settings.defaultID);
    return values;
}

bool MacSMTPService::hasCompleteAccount() const {
    return std::ranges::any_of(settings_.accounts, &MacSMTPAccount::isComplete);
}

MacSMTPService::AccountState MacSMTPService::state(const std::string& id) const {
    const auto state = states_.find(id);
    return state == states_.end() ? AccountState{} : state->second;
}

void MacSMTPService::setState(const std::string& id, AccountState state) {
    states_[id] = std::move(state);
    changed_.tell();
}

void MacSMTPService::keep() {
    settings_.applyDefaultRule();
    std::vector<std::string> removed;
    if (!settings_.defaultID) removed.emplace_back(defaultKey);
    services_.defaults.changeTogether(values(settings_), removed);
    changed_.tell();
}

Task<Result<void>> MacSMTPService::keepOnceSaved(std::function<void(Settings&)> change) {
    Settings settings;
    auto changed = [&] {
        settings = settings_;
        change(settings);
        settings.applyDefaultRule();
        return values(settings);
    };
    co_return co_await changes_.make(changed, [&] {
        settings_ = std::move(settings);
        if (!settings_.defaultID) services_.defaults.remove(defaultKey);
    });
}

Task<Result<std::string>> MacSMTPService::ulozit(MacSMTPAccount ucet, std::string heslo) {
    for (auto* text : {&ucet.label, &ucet.address, &ucet.senderName, &ucet.imapHost, &ucet.smtpHost})
        *text = trim(*text);
    const bool isNew = !find(settings_.accounts, ucet.id);
    if (isNew) ucet.id = services_.random.uuid().text();
    const auto vaultAccount = passwordAccount(ucet.id);
    std::optional<std::string> before;
    if (!heslo.empty()) {
        if (!isNew) before = co_await services_.keychain.read(vaultAccount);
        CO_CHECK(co_await services_.keychain.save(heslo, vaultAccount));
    }
    auto saved = co_await keepOnceSaved([&](Settings& settings) {
        const auto account = std::ranges::find(settings.accounts, ucet.id, &MacSMTPAccount::id);
        if (account != settings.accounts.end())
            *account = ucet;
        else if (isNew) // another one may have been removed while the keychain worked
            settings.accounts.push_back(ucet);
    });
    if (!saved) {
        if (!heslo.empty()) co_await restorePassword(vaultAccount, std::move(before));
        co_return fail(std::move(saved).error());
    }
    setState(ucet.id, {});
    co_return ucet.id;
}

Task<void> MacSMTPService::restorePassword(std::string account, std::optional<std::string> before) {
    const bool isRestored = before && co_await services_.keychain.save(*std::move(before), account);
    if (!isRestored) co_await services_.keychain.remove(account);
}

Task<void> MacSMTPService::odstranit(std::string id) {
    if (!find(settings_.accounts, id)) co_return;
    std::erase_if(settings_.accounts, [&id](const MacSMTPAccount& account) { return account.id == id; });
    states_.erase(id);
    settings_.applyDefaultRule();
    changed_.tell();
    co_await services_.keychain.remove(passwordAccount(id));
    keep();
}

void MacSMTPService::nastavVychozi(const std::string& id) {
    if (!find(settings_.accounts, id)) return;
    settings_.defaultID = id;
    keep();
}

Task<void> MacSMTPService::otestovat(std::string id) {
    const auto* found = find(settings_.accounts, id);
    if (!found) co_return;
    const auto account = *found;
    setState(id, {AccountState::Case::testing});
    const LimitedStop stop(services_.mail.clock, timeLimit, services_.stop);
    auto client = co_await logIn(account, stop.token());
    if (client) co_await (*client)->logout();
    const auto* now = find(settings_.accounts, id);
    if (!now || *now != account || state(id).kind != AccountState::Case::testing) co_return;
    setState(id, client ? AccountState{AccountState::Case::ready}
                        : AccountState{AccountState::Case::failed, client.error().popis()});
}

Result<MacSMTPAccount> MacSMTPService::ucet(const std::optional<std::string>& jmeno) const {
    return pick(settings_.accounts, settings_.defaultID, jmeno);
}

std::optional<MacSMTPAccount> MacSMTPService::najdiUcet(const std::optional<std::string>& jmeno) const {
    auto account = pick(complete(settings_.accounts), settings_.defaultID, jmeno);
    return account ? std::optional(*std::move(account)) : std::nullopt;
}

Task<Result<std::string>> MacSMTPService::password(const MacSMTPAccount& account) {
    auto found = co_await services_.keychain.read(passwordAccount(account.id));
    if (!found || found->empty()) co_return fail(MacSMTPServiceError{MacSMTPServiceError::MissingPassword{}});
    co_return *std::move(found);
}

Task<Result<std::unique_ptr<MacIMAPClient>>> MacSMTPService::logIn(MacSMTPAccount account,
                                                                   std::stop_token stop) {
    CO_TRY(auto, secret, co_await password(account));
    auto client = std::make_unique<MacIMAPClient>(services_.mail, account.imapHost, account.address,
                                                  std::move(secret), std::move(stop));
    auto done = co_await client->login();
    if (done) co_return client;
    co_await client->logout();
    co_return fail(std::move(done).error());
}

Task<Result<std::vector<MacSMTPMessage>>> MacSMTPService::zpravy(std::optional<std::string> ucet,
                                                                 std::optional<std::string> hledat,
                                                                 bool jenNeprectene, std::int64_t limit) {
    auto asked = complete(settings_.accounts);
    if (ucet && !ucet->empty()) {
        CO_TRY(auto, account, this->ucet(ucet));
        asked.assign(1, std::move(account));
    }
    const auto count = static_cast<std::size_t>(std::clamp<std::int64_t>(limit, 0, mostMessages));
    const auto wanted = hledat ? fold(*hledat) : std::string();
    std::vector<MacSMTPMessage> messages;
    for (auto& account : asked) {
        CO_TRY(auto, found, co_await messagesOf(std::move(account), wanted, jenNeprectene, count));
        std::ranges::move(found, std::back_inserter(messages));
    }
    co_return messages;
}

Task<Result<std::vector<MacSMTPMessage>>>
MacSMTPService::messagesOf(MacSMTPAccount account, std::string wanted, bool onlyUnread, std::size_t limit) {
    const LimitedStop stop(services_.mail.clock, timeLimit, services_.stop);
    CO_TRY(auto, client, co_await logIn(account, stop.token()));
    auto headers = co_await newest(*client, onlyUnread, limit * headersForEachMessage);
    co_await client->logout();
    if (!headers) co_return fail(std::move(headers).error());
    auto found = co_await runOn(services_.mail.workers, [&headers, &wanted, limit] {
        return matching(*std::move(headers), wanted, limit);
    });
    std::vector<MacSMTPMessage> messages;
    for (auto& message : found)
        messages.push_back({MacSMTPMessageID{account.id, message.uid}.text(), account.id, account.label,
                            std::move(message.from), std::move(message.subject), std::move(message.date),
                            message.read});
    co_return messages;
}

Task<Result<std::string>> MacSMTPService::obsah(std::string id) {
    const auto named = MacSMTPMessageID::parse(id);
    if (!named) co_return fail(MacSMTPServiceError{MacSMTPServiceError::NoMessage{}});
    const auto* account = find(settings_.accounts, named->accountID);
    if (!account) co_return fail(MacSMTPServiceError{MacSMTPServiceError::UnknownAccount{named->accountID}});
    const LimitedStop stop(services_.mail.clock, timeLimit, services_.stop);
    CO_TRY(auto, client, co_await logIn(*account, stop.token()));
    auto text = co_await textOf(*client, named->uid);
    co_await client->logout();
    co_return text;
}

Task<Result<Sentence>> MacSMTPService::odeslat(std::optional<std::string> ucet, std::string komu,
                                               std::string predmet, std::string telo) {
    CO_TRY(auto, account, this->ucet(ucet));
    CO_TRY(auto, secret, co_await password(account));
    const auto& sender = account.senderName.empty() ? account.shownName() : account.senderName;
    const LimitedStop stop(services_.mail.clock, timeLimit, services_.stop);
    MacSMTPClient client(services_.mail, account.smtpHost, account.address, std::move(secret),
                         account.address, sender, stop.token());
    CO_CHECK(co_await client.send(std::move(komu), std::move(predmet), std::move(telo)));
    co_return "E-mail byl odeslán z účtu {ucet}."_sentence(account.shownName());
}

Result<Sentence> MacSMTPService::koncept() {
    return fail(MacSMTPServiceError{MacSMTPServiceError::DraftUnsupported{}});
}

} // namespace morvex
