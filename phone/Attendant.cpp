#include "phone/Attendant.h"

#include "foundation/Text.h"
#include "phone/EventText.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace morvex {

namespace {

ApprovalPolicy policyOf(const Phone& phone) {
    if (phone.options.approve) return *phone.options.approve;
    return phone.keyboard.isInteractive() ? ApprovalPolicy::ask : ApprovalPolicy::leave;
}

/// Whether the user should see the event while a command waits for something else.
bool matters(const Inbox::Event& event) {
    if (std::holds_alternative<SecureLink::Chyba>(event)) return true;
    if (const auto* told = std::get_if<SecureLink::Stav>(&event))
        return told->stav.as<MacAvailability::NeplatneParovani>() != nullptr;
    const auto* message = std::get_if<SecureLink::Zprava>(&event);
    return message && (message->payload.as<MacPayload::ToolProgress>() ||
                       message->payload.as<MacPayload::WorkItemUpdate>());
}

const MacAvailability::Preruseno* troubleIn(const Inbox::Event& event) {
    const auto* told = std::get_if<SecureLink::Stav>(&event);
    return told ? told->stav.as<MacAvailability::Preruseno>() : nullptr;
}

} // namespace

std::optional<bool> yesOrNo(const std::string& line) {
    constexpr std::array<std::string_view, 4> yes{"a", "ano", "y", "yes"};
    constexpr std::array<std::string_view, 3> no{"n", "ne", "no"};
    const auto word = fold(trim(line));
    if (std::ranges::find(yes, word) != yes.end()) return true;
    if (std::ranges::find(no, word) != no.end()) return false;
    return std::nullopt;
}

Attendant::Attendant(Phone& phone, PhoneSession& session, Shows shows)
    : phone_(phone),
      session_(session),
      records_(phone.records, session, phone.terminal),
      settings_(phone.settings, session, phone.terminal),
      shows_(shows),
      policy_(policyOf(phone)) {}

Task<void> Attendant::heard(Inbox::Event event) {
    if (!isMilestone(event)) show(event);
    if (const auto* line = std::get_if<Inbox::Line>(&event)) {
        phone_.lineArrived();
        const bool isAnswered = co_await isAnswer(line->text);
        if (!isAnswered && open_) ask();
    }
    co_await settings_.heard(event);
    co_await records_.heard(event);
    const auto* message = std::get_if<SecureLink::Zprava>(&event);
    if (!message) co_return;
    if (const auto* told = message->payload.as<MacPayload::WorkItemUpdate>()) co_await take(told->item);
    if (const auto* told = message->payload.as<MacPayload::Approval>()) co_await consider(told->request);
}

bool Attendant::isMilestone(const Inbox::Event& event) const {
    const auto* message = std::get_if<SecureLink::Zprava>(&event);
    return message && (records_.isMilestone(*message) || settings_.isMilestone(*message));
}

void Attendant::show(const Inbox::Event& event) {
    const auto now = phone_.now();
    if (shows_ == Shows::everything) {
        const auto json = phone_.options.isJson ? eventJson(event, now) : std::nullopt;
        if (json) phone_.terminal.printJson(*json);
        if (phone_.options.isJson) return;
        if (auto line = eventLine(event, now, phone_.zone())) phone_.terminal.print(*line);
        return;
    }
    const auto* trouble = troubleIn(event);
    const bool isNews = trouble && std::exchange(lastTrouble_, trouble->duvod) != trouble->duvod;
    if (!isNews && !matters(event)) return;
    if (auto line = eventLine(event, now, phone_.zone())) phone_.terminal.note(*line);
}

Task<void> Attendant::take(WorkItem item) {
    auto kept = phone_.tasks.take(item);
    if (!kept) co_return phone_.terminal.problem("Úlohu nejde uložit: " + kept.error().popis().czech());
    co_await session_.acknowledge(std::move(item));
}

Task<void> Attendant::consider(ApprovalRequest request) {
    if (!request.isValid(phone_.now())) co_return;
    for (const auto& line : approvalLines(request, phone_.now())) phone_.terminal.note(line);
    if (request.tool == called_)
        co_return phone_.terminal.note(
            "Rozhodni na Macu: dokud na to čeká tohle volání, odpověď odsud nepřečte.");
    open_ = std::move(request);
    if (policy_ == ApprovalPolicy::leave)
        co_return phone_.terminal.note("Tady se neptám, rozhodni v okně Macu.");
    phone_.terminal.note("Rozhodnout se dá i v okně Macu.");
    if (policy_ == ApprovalPolicy::ask) co_return ask();
    co_await answer(policy_ == ApprovalPolicy::yes);
}

void Attendant::ask() {
    phone_.keyboard.forgetTypeAhead();
    phone_.terminal.prompt("Potvrdit? [a/n] ");
    phone_.requestLine();
}

Task<bool> Attendant::isAnswer(std::string line) {
    dropExpired();
    const auto decision = open_ ? yesOrNo(line) : std::nullopt;
    if (!decision) co_return false;
    co_await answer(*decision);
    co_return true;
}

Task<void> Attendant::answer(bool isApproved) {
    auto sent = co_await decide(std::nullopt, isApproved);
    if (!sent) phone_.terminal.problem(sent.error().popis());
}

Task<Result<void>> Attendant::decide(std::optional<std::string> approvalID, bool isApproved) {
    dropExpired();
    if (!approvalID && !open_) co_return failWith(ExitCode::refused, "Žádná žádost o potvrzení nečeká.");
    const auto id = approvalID.value_or(open_ ? open_->id : "");
    auto sent = co_await session_.decide(id, isApproved);
    if (!sent) co_return sent;
    hasDecided_ = true;
    if (open_ && open_->id == id) open_.reset();
    phone_.terminal.note(isApproved ? "Odeslal jsem souhlas." : "Odeslal jsem zamítnutí.");
    co_return sent;
}

void Attendant::dropExpired() {
    if (open_ && !open_->isValid(phone_.now())) open_.reset();
}

} // namespace morvex
