#include "app/mail/MailTools.h"

#include "app/mail/MacSMTPServiceError.h"
#include "foundation/Text.h"
#include "shared/base/FrameLimit.h"
#include "shared/wire/MacToolName.h"

#include <algorithm>
#include <utility>

namespace morvex {

void describe(auto& io, Is<MailSearch> auto& search) {
    io.optional("query", search.query);
    io.optional("account", search.account);
    io.optional("limit", search.limit);
}

void describe(auto& io, Is<MailToRead> auto& mail) {
    io.required("id", mail.id);
}

void describe(auto& io, Is<OutgoingMail> auto& mail) {
    io.required("to", mail.to);
    io.required("subject", mail.subject);
    io.required("body", mail.body);
    io.optional("account", mail.account);
}

namespace {

constexpr std::int64_t usuallyFound = 10;
constexpr std::string_view applePrefix = "apple:";
constexpr std::string_view smtpPrefix = "smtp:";

ToolOutcome notSent(std::string why) {
    return {false, {{"sent", false}, {"error", std::move(why)}}};
}

MailApproval questionAbout(const OutgoingMail& mail, const std::string& sender, std::string tool) {
    return {std::move(tool), "Odeslat mail",
            "Chystám se odeslat mail pro " + mail.to + ". Předmět: " + mail.subject + ". Text: " + mail.body +
                " Mám to poslat?",
            "Odesílatel: " + sender + "\nKomu: " + mail.to + "\nPředmět: " + mail.subject + "\n\n" +
                mail.body};
}

} // namespace

/// What a search has found so far, over all its sources.
class MailTools::Found {
  public:
    /// Looks for unread mail where there is no query.
    Found(std::string query, std::int64_t limit)
        : query(std::move(query)),
          limit_(static_cast<std::size_t>(std::clamp<std::int64_t>(limit, 0, MacSMTPService::mostMessages))) {
    }

    const std::string query;

    [[nodiscard]] bool isFull() const { return messages_.size() >= limit_; }

    [[nodiscard]] std::int64_t missing() const {
        return static_cast<std::int64_t>(limit_ - messages_.size());
    }

    [[nodiscard]] std::int64_t limit() const { return static_cast<std::int64_t>(limit_); }

    [[nodiscard]] bool onlyUnread() const { return query.empty(); }

    void add(boost::json::object message) {
        if (isFull()) return;
        for (const auto& member : message)
            if (const auto* text = member.value().if_string()) bytes_ += text->size();
        messages_.emplace_back(std::move(message));
    }

    void note(const Error& failure) { failure_ = failure.popis().czech(); }

    /// A failure counts only when nothing was found at all; of several the last one.
    [[nodiscard]] ToolOutcome outcome() && {
        if (messages_.empty() && failure_) return ToolOutcome::refused(*std::move(failure_));
        if (bytes_ > frameLimit) return ToolOutcome::tooLong();
        const auto count = messages_.size();
        return ToolOutcome::done({{"count", count}, {"messages", std::move(messages_)}});
    }

  private:
    std::size_t limit_;
    boost::json::array messages_;
    std::size_t bytes_ = 0;
    std::optional<std::string> failure_;
};

void MailTools::addTo(ToolTable& table) {
    const auto offered = [this] { return isOffered(); };
    table.add(MacToolName::mailSearch, offered, this, &MailTools::search);
    table.add(MacToolName::mailRead, offered, this, &MailTools::read);
    table.add(MacToolName::mailSend, offered, this, &MailTools::send);
    table.add(MacToolName::mailCreateDraft, offered, this, &MailTools::createDraft);
}

bool MailTools::isOffered() const {
    const auto& on = sources_.integrations;
    return (on.isOn(Integration::appleMail) && isAppleUsable_() && !sources_.accounts.povolene().empty()) ||
           (on.isOn(Integration::smtp) && sources_.smtp.hasCompleteAccount());
}

Task<ToolOutcome> MailTools::search(MailSearch search, ToolCall call) {
    Found found(trim(search.query.value_or("")), search.limit.value_or(usuallyFound));
    if (trim(search.account.value_or("")).empty()) {
        co_await searchAll(found, std::move(call.abandonment));
        co_return std::move(found).outcome();
    }
    const auto target = resolveMailTarget(sources_, search.account);
    if (!target) co_return ToolOutcome::refused(target.error());
    if (const auto* apple = std::get_if<MailTarget::Apple>(&target->value))
        co_await searchApple(apple->account, found, std::move(call.abandonment));
    else
        co_await searchSmtp(std::get<MailTarget::Smtp>(target->value).id, found);
    co_return std::move(found).outcome();
}

Task<void> MailTools::searchAll(Found& found, std::stop_token stop) {
    const auto& on = sources_.integrations;
    if (on.isOn(Integration::appleMail) && isAppleUsable_()) {
        const auto allowed = sources_.accounts.povolene();
        if (allowed.empty()) found.note(MacMailAccounts::Error{MacMailAccounts::Error::NoAccountEnabled{}});
        for (const auto& account : allowed)
            if (!found.isFull()) co_await searchApple(account, found, stop);
    }
    if (!on.isOn(Integration::smtp)) co_return;
    for (const auto& account : std::vector(sources_.smtp.accounts()))
        if (account.isComplete() && !found.isFull()) co_await searchSmtp(account.id, found);
}

Task<void> MailTools::searchApple(std::string account, Found& found, std::stop_token stop) {
    auto messages = co_await sources_.bridge.zpravy(found.query, std::move(account), found.onlyUnread(),
                                                    found.missing(), std::move(stop));
    if (!messages) co_return found.note(messages.error());
    for (auto& message : *messages)
        found.add({{"id", std::string(applePrefix) + message.id},
                   {"from", std::move(message.od)},
                   {"subject", std::move(message.predmet)},
                   {"date", std::move(message.datum)},
                   {"unread", !message.precteno},
                   {"account", std::move(message.ucet)},
                   {"preview", std::move(message.ukazka)}});
}

Task<void> MailTools::searchSmtp(std::string accountID, Found& found) {
    auto query = found.query.empty() ? std::nullopt : std::optional(found.query);
    auto messages = co_await sources_.smtp.zpravy(std::move(accountID), std::move(query), found.onlyUnread(),
                                                  found.limit());
    if (!messages) co_return found.note(messages.error());
    for (auto& message : *messages)
        found.add({{"id", std::move(message.id)},
                   {"from", std::move(message.from)},
                   {"subject", std::move(message.subject)},
                   {"date", std::move(message.date)},
                   {"unread", !message.read},
                   {"account", std::move(message.account)},
                   {"preview", ""}});
}

Task<ToolOutcome> MailTools::read(MailToRead mail, ToolCall call) {
    if (mail.id.empty()) co_return ToolOutcome::refused("Chybí číslo zprávy.");
    Result<std::string> text;
    if (mail.id.starts_with(smtpPrefix)) {
        text = co_await sources_.smtp.obsah(std::move(mail.id));
    } else {
        if (mail.id.starts_with(applePrefix)) mail.id.erase(0, applePrefix.size());
        auto allowed = sources_.accounts.povolene();
        // To the bridge an empty list means every account.
        if (allowed.empty())
            co_return ToolOutcome::refused(
                sources_.accounts.problem()
                    .value_or(MacMailAccounts::Error{MacMailAccounts::Error::NoAccountEnabled{}}.popis())
                    .czech());
        text = co_await sources_.bridge.obsah(std::move(mail.id), std::move(allowed),
                                              std::move(call.abandonment));
    }
    if (!text) co_return ToolOutcome::refused(text.error());
    if (text->size() > frameLimit) co_return ToolOutcome::tooLong();
    co_return ToolOutcome::done({{"body", *std::move(text)}});
}

Task<ToolOutcome> MailTools::send(OutgoingMail mail, ToolCall call) {
    auto target = resolveMailTarget(sources_, mail.account);
    if (!target) co_return ToolOutcome::refused(target.error());
    if (mail.to.empty() || mail.body.empty()) co_return ToolOutcome::refused("Chybí příjemce nebo text.");
    const bool isApproved = co_await approve_(questionAbout(mail, target->sender(), std::move(call.name)));
    if (isApproved)
        co_return co_await sendApproved(*std::move(target), std::move(mail), std::move(call.abandonment));
    co_return co_await keepRefused(*std::move(target), std::move(mail), std::move(call.abandonment));
}

Task<ToolOutcome> MailTools::sendApproved(MailTarget target, OutgoingMail mail, std::stop_token stop) {
    std::string told;
    if (const auto* apple = std::get_if<MailTarget::Apple>(&target.value)) {
        auto sent = co_await sources_.bridge.odeslat(apple->account, std::move(mail.to),
                                                     std::move(mail.subject), std::move(mail.body), stop);
        if (!sent) co_return notSent(sent.error().popis().czech());
        told = *std::move(sent);
    } else {
        const auto& account = std::get<MailTarget::Smtp>(target.value);
        // It may have been removed while the user decided.
        if (std::ranges::count(sources_.smtp.accounts(), account.id, &MacSMTPAccount::id) == 0)
            co_return notSent(
                MacSMTPServiceError{MacSMTPServiceError::UnknownAccount{target.sender()}}.popis().czech());
        auto sent = co_await sources_.smtp.odeslat(account.id, std::move(mail.to), std::move(mail.subject),
                                                   std::move(mail.body));
        if (!sent) co_return notSent(sent.error().popis().czech());
        told = sent->czech();
    }
    co_return ToolOutcome::done({{"sent", true}, {"message", std::move(told)}});
}

/// A mail of Apple Mail stays as a draft, so that what was written is not lost.
Task<ToolOutcome> MailTools::keepRefused(MailTarget target, OutgoingMail mail, std::stop_token stop) {
    const std::string refused = "Neodesláno — nepotvrzeno.";
    const auto* apple = std::get_if<MailTarget::Apple>(&target.value);
    if (!apple) co_return notSent(refused);
    const auto draft = co_await sources_.bridge.koncept(
        apple->account, std::move(mail.to), std::move(mail.subject), std::move(mail.body), std::move(stop));
    co_return notSent(draft ? refused + " Nechal jsem to jako koncept." : refused);
}

Task<ToolOutcome> MailTools::createDraft(OutgoingMail mail, ToolCall call) {
    if (mail.to.empty()) co_return ToolOutcome::refused("Chybí příjemce.");
    const auto target = resolveMailTarget(sources_, mail.account);
    if (!target) co_return ToolOutcome::refused(target.error());
    const auto* apple = std::get_if<MailTarget::Apple>(&target->value);
    if (!apple) co_return ToolOutcome::refused(MacSMTPService::koncept().error());
    auto draft = co_await sources_.bridge.koncept(apple->account, std::move(mail.to), std::move(mail.subject),
                                                  std::move(mail.body), std::move(call.abandonment));
    if (!draft) co_return ToolOutcome::refused(draft.error());
    co_return ToolOutcome::done({{"message", *std::move(draft)}, {"sent", false}});
}

} // namespace morvex
