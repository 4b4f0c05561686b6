#include "app/link/PhoneLink.h"

#include "shared/wire/TalkSpanError.h"

#include <utility>

namespace morvex {

namespace {

Task<void> start(std::shared_ptr<SecureLink> link) {
    co_await link->spustit();
}

Task<void> tryNow(std::shared_ptr<SecureLink> link) {
    co_await link->connectNow();
}

Task<void> takeDown(std::shared_ptr<SecureLink> link) {
    co_await link->zastavit();
}

Task<void> drain(std::shared_ptr<TaskScope> listener) {
    co_await listener->join();
}

bool isMessage(const SecureLink::Udalost& event) {
    return std::holds_alternative<SecureLink::Zprava>(event);
}

bool isCall(const SecureLink::Zprava& message) {
    return std::holds_alternative<MacPayload::ToolCall>(message.payload.value);
}

} // namespace

PhoneLink::PhoneLink(Executor& main, TaskScope& scope, PhoneInbox& inbox, Handler handler)
    : main_(main), scope_(scope), inbox_(inbox), handler_(std::move(handler)), leaving_(main) {}

void PhoneLink::pripojit(std::shared_ptr<SecureLink> link) {
    odpojit();
    link_ = std::move(link);
    posluchac_ = std::make_shared<TaskScope>(main_);
    posluchac_->spawn(listen(link_, posluchac_->token()));
    scope_.spawn(start(link_));
}

void PhoneLink::odpojit() {
    if (!link_) return;
    posluchac_->stop();
    // The link counts the waiting messages, and it goes away now.
    for (auto* session = relace_.get(); session; session = session->before.get()) session->waiting.clear();
    beginSession();
    scope_.spawn(drain(std::move(posluchac_)));
    leaving_.spawn(takeDown(std::exchange(link_, nullptr)));
}

void PhoneLink::connectNow() {
    if (link_) scope_.spawn(tryNow(link_));
}

Task<Result<void>> PhoneLink::poslat(MacPayload payload, std::string requestID) {
    auto link = link_;
    if (!link) co_return fail(TalkSpanError{TalkSpanError::MacOffline{}});
    co_return co_await link->poslat(std::move(payload), std::move(requestID));
}

Task<void> PhoneLink::listen(std::shared_ptr<SecureLink> link, std::stop_token stop) {
    while (auto held = co_await link->udalosti().nextHeld(stop)) {
        if (isMessage(held->event)) {
            putAside(link, *std::move(held));
            continue;
        }
        if (std::holds_alternative<SecureLink::Pripraveno>(held->event)) beginSession();
        co_await handler_(link, std::move(held->event));
    }
}

void PhoneLink::beginSession() {
    const bool isIdle = relace_->waiting.empty() && !relace_->handling.isTaken();
    if (!isIdle) relace_ = std::make_shared<Session>(std::move(relace_));
}

void PhoneLink::putAside(const std::shared_ptr<SecureLink>& link, Event message) {
    const bool isHandled = !relace_->waiting.empty() || relace_->handling.isTaken();
    relace_->waiting.push_back(std::move(message));
    if (!isHandled) posluchac_->spawn(handleMessages(link, relace_, posluchac_->token()));
}

Task<void> PhoneLink::waitForThoseBefore(Session& session) {
    // An earlier session without a call has not waited for its own predecessors.
    for (auto earlier = session.before; earlier; earlier = earlier->before)
        (void)co_await earlier->handling.take();
    session.before.reset();
}

Task<void> PhoneLink::handleMessages(std::shared_ptr<SecureLink> link, std::shared_ptr<Session> session,
                                     std::stop_token stop) {
    const auto turn = co_await session->handling.take();
    while (!session->waiting.empty() && !stop.stop_requested()) {
        auto message = std::move(session->waiting.front());
        session->waiting.pop_front();
        auto& zprava = std::get<SecureLink::Zprava>(message.event);
        if (isCall(zprava)) co_await waitForThoseBefore(*session);
        if (stop.stop_requested()) co_return;
        co_await inbox_.zpracovatZpravu(std::move(zprava.payload), {link, std::move(zprava.requestID)});
    }
}

} // namespace morvex
