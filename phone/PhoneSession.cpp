#include "phone/PhoneSession.h"

#include "phone/PhoneError.h"
#include "shared/base/Try.h"
#include "shared/wire/MacToolName.h"

#include <algorithm>
#include <utility>

namespace morvex {

namespace {

/// Longer than any approval request of a Mac is valid.
constexpr Date::duration longestApproval = std::chrono::minutes(10);

/// Whether the message shows that the Mac is working on things that precede the awaited one.
bool isSignOfLife(const MacPayload& payload) {
    return payload.as<MacPayload::NoteUpdate>() || payload.as<MacPayload::WorkItemUpdate>() ||
           payload.as<MacPayload::NoteAck>() || payload.as<MacPayload::SummaryAck>() ||
           payload.as<MacPayload::ToolResult>();
}

std::unexpected<Error> connectionBroke() {
    return failWith(ExitCode::macUnreachable, "Spojení se přerušilo, Mac to možná nemá. Zkus to znovu.");
}

} // namespace

Result<std::unique_ptr<PhoneSession>> PhoneSession::create(std::shared_ptr<const DeviceIdentity> identita,
                                                           PairedPeer mac, SecureLink::Services services,
                                                           Inbox& inbox) {
    TRY(auto, link, SecureLink::create(std::move(identita), std::move(mac), DeviceRole::phone, services));
    return std::unique_ptr<PhoneSession>(new PhoneSession(std::move(link), services, inbox));
}

PhoneSession::PhoneSession(std::shared_ptr<SecureLink> link, SecureLink::Services services, Inbox& inbox)
    : link_(std::move(link)), services_(services), inbox_(inbox), forwarding_(services.relay.executor) {}

Task<void> PhoneSession::start() {
    forwarding_.spawn(inbox_.forward(link_->udalosti(), forwarding_.token()));
    co_await link_->spustit();
}

Task<void> PhoneSession::stop() {
    co_await link_->zastavit();
    forwarding_.stop();
    co_await forwarding_.join();
}

Task<std::optional<Inbox::Event>> PhoneSession::next(std::optional<Clock::Duration> until) {
    auto event = co_await inbox_.next(until);
    if (event) takeNote(*event);
    co_return event;
}

Task<Result<void>> PhoneSession::untilReady(Clock::Duration limit, EventListener& listener) {
    co_return co_await untilReadyBy(clock().sinceBoot() + limit, listener);
}

Task<Result<void>> PhoneSession::untilReadyBy(Clock::Duration deadline, EventListener& listener) {
    while (!isReady_) {
        auto event = co_await next(deadline);
        if (!event || refusal_) co_return unreachable();
        co_await listener.heard(*std::move(event));
    }
    co_return Result<void>{};
}

Task<Result<MacStatus>> PhoneSession::status(Clock::Duration limit, EventListener& listener) {
    auto deadline = clock().sinceBoot() + limit;
    while (!status_) {
        auto event = co_await next(deadline);
        if (!event || refusal_) co_return unreachable();
        if (const auto* message = std::get_if<SecureLink::Zprava>(&*event))
            if (isSignOfLife(message->payload)) deadline = clock().sinceBoot() + limit;
        co_await listener.heard(*std::move(event));
    }
    co_return *status_;
}

Task<Result<void>> PhoneSession::until(std::function<bool()> isSo, Clock::Duration limit,
                                       EventListener& listener) {
    auto deadline = clock().sinceBoot() + limit;
    while (!isSo()) {
        auto event = co_await next(deadline);
        if (!event || refusal_) co_return unanswered();
        if (const auto* message = std::get_if<SecureLink::Zprava>(&*event))
            deadline = prolonged(deadline, limit, *message, "");
        co_await listener.heard(*std::move(event));
    }
    co_return Result<void>{};
}

Task<Result<MacPayload::ToolResult>> PhoneSession::call(std::string name, std::string argumentsJSON,
                                                        Clock::Duration limit, EventListener& listener) {
    const auto deadline = clock().sinceBoot() + limit;
    CO_CHECK(co_await untilReadyBy(deadline, listener));
    auto id = services_.random.uuid().text();
    CO_CHECK(co_await link_->poslat({MacPayload::ToolCall{std::move(name), std::move(argumentsJSON)}}, id));
    co_return co_await result(std::move(id), deadline, limit, listener);
}

Task<Result<MacPayload::ToolResult>> PhoneSession::result(std::string id, Clock::Duration deadline,
                                                          Clock::Duration limit, EventListener& listener) {
    while (auto event = co_await next(deadline)) {
        if (auto* message = std::get_if<SecureLink::Zprava>(&*event)) {
            const auto* result = message->payload.as<MacPayload::ToolResult>();
            if (result && message->requestID == id) {
                auto answer = *result;
                co_await listener.heard(*std::move(event));
                co_return answer;
            }
            deadline = prolonged(deadline, limit, *message, id);
        }
        if (refusal_) break;
        co_await listener.heard(*std::move(event));
    }
    co_return unanswered();
}

std::unexpected<Error> PhoneSession::unanswered() const {
    if (!isReady_ || refusal_ || inbox_.isInterrupted()) return unreachable();
    return failWith(ExitCode::macUnreachable, "Mac včas neodpověděl. Jestli to provedl, odsud nepoznám.");
}

Clock::Duration PhoneSession::prolonged(Clock::Duration deadline, Clock::Duration limit,
                                        const SecureLink::Zprava& message, const std::string& id) const {
    const auto present = clock().sinceBoot();
    if (message.requestID == id || isSignOfLife(message.payload)) return std::max(deadline, present + limit);
    const auto* approval = message.payload.as<MacPayload::Approval>();
    if (!approval) return deadline;
    const auto left = std::min(approval->request.expiresAt - clock().now(), longestApproval);
    return std::max(deadline, present + left + limit);
}

Task<Result<void>> PhoneSession::handOver(MacPayload payload, std::string requestID, Clock::Duration limit,
                                          EventListener& listener) {
    CO_CHECK(co_await untilReady(limit, listener));
    const auto session = sessions_;
    CO_CHECK(co_await link_->poslat(std::move(payload), std::move(requestID)));
    auto milestone = co_await sendMilestone();
    if (milestone.empty()) co_return connectionBroke();
    CO_CHECK(co_await result(std::move(milestone), clock().sinceBoot() + limit, limit, listener));
    // A later session would answer, too, though the message may have been lost with the earlier one.
    if (sessions_ == session) co_return Result<void>{};
    co_return connectionBroke();
}

Task<Result<void>> PhoneSession::decide(std::string approvalID, bool isApproved) {
    auto requestID = approvalID;
    MacPayload::ApprovalDecision decision{std::move(approvalID), isApproved, std::nullopt};
    co_return co_await link_->poslat({std::move(decision)}, std::move(requestID));
}

Task<Result<void>> PhoneSession::trySend(MacPayload payload, std::string requestID) {
    co_return co_await link_->poslat(std::move(payload), std::move(requestID));
}

Task<std::string> PhoneSession::sendMilestone() {
    auto id = "milestone:" + services_.random.uuid().text();
    MacPayload::ToolCall call{std::string(MacToolName::status), "{}"};
    auto sent = co_await link_->poslat({std::move(call)}, id);
    co_return sent ? id : "";
}

Task<void> PhoneSession::acknowledge(WorkItem item) {
    auto requestID = "work-item-ack:" + item.id.text();
    (void)co_await trySend({MacPayload::WorkItemAck{item.id, item.revision}}, std::move(requestID));
}

void PhoneSession::takeNote(const Inbox::Event& event) {
    if (const auto* told = std::get_if<SecureLink::Stav>(&event)) return takeNote(told->stav);
    // A failure before the login is a refusal by the relay.
    if (const auto* told = std::get_if<SecureLink::Chyba>(&event); told && !isAtRelay_)
        refusal_ = told->text.czech();
    if (const auto* told = std::get_if<SecureLink::Zprava>(&event))
        if (const auto* report = told->payload.as<MacPayload::Status>()) status_ = report->status;
}

void PhoneSession::takeNote(const MacAvailability& stav) {
    isReady_ = stav.jePouzitelny();
    if (!isReady_) status_.reset();
    if (isReady_) ++sessions_;
    if (stav.as<MacAvailability::Pripojuji>()) isAtRelay_ = false;
    if (stav.as<MacAvailability::Offline>()) {
        isAtRelay_ = true;
        refusal_.reset();
    }
    if (const auto* told = stav.as<MacAvailability::Preruseno>()) {
        isAtRelay_ = false;
        trouble_ = told->duvod.czech();
    }
    if (const auto* told = stav.as<MacAvailability::NeplatneParovani>()) refusal_ = told->duvod.czech();
}

std::optional<Error> PhoneSession::refusal() const {
    if (!refusal_) return std::nullopt;
    return turnedAway(*refusal_);
}

std::unexpected<Error> PhoneSession::unreachable() const {
    if (inbox_.isInterrupted()) return fail(userInterrupted());
    if (auto refused = refusal()) return fail(*std::move(refused));
    if (isAtRelay_)
        return failWith(ExitCode::macUnreachable, "Mac se včas neozval. Běží na něm Morvex a je online?");
    return fail(relaySilent(trouble_));
}

} // namespace morvex
