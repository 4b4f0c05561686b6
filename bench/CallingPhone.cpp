#include "bench/CallingPhone.h"

#include "tests/support/Await.h"

#include <utility>

namespace morvex {

namespace {

using Now = std::chrono::steady_clock;

} // namespace

CallingPhone::CallingPhone(Executor& executor, std::shared_ptr<SecureLink> link)
    : executor_(executor), link_(std::move(link)), scope_(executor) {
    executor_.post([this] { scope_.spawn(listen(scope_.token())); });
    await(executor_, link_->spustit());
}

CallingPhone::~CallingPhone() {
    await(executor_, end(this));
}

Task<void> CallingPhone::end(CallingPhone* self) {
    co_await self->link_->zastavit();
    self->scope_.stop();
    co_await self->scope_.join();
}

void CallingPhone::call(std::size_t count, Calls calls) {
    {
        std::lock_guard lock(mutex_);
        tally_.lastSign = Now::now();
    }
    executor_.post(
        [this, count, calls = std::move(calls)]() mutable { scope_.spawn(send(count, std::move(calls))); });
}

CallingPhone::Tally CallingPhone::tally() const {
    std::lock_guard lock(mutex_);
    return tally_;
}

Task<void> CallingPhone::listen(std::stop_token stop) {
    while (auto event = co_await link_->udalosti().next(stop)) take(*event);
}

Task<void> CallingPhone::send(std::size_t count, Calls calls) {
    for (std::size_t number = 0; number < count; ++number) {
        std::string requestID;
        {
            std::lock_guard lock(mutex_);
            requestID = "request-" + std::to_string(++tally_.sent);
            unanswered_.insert(requestID);
        }
        const auto sent = co_await link_->poslat({calls(number)}, std::move(requestID));
        std::lock_guard lock(mutex_);
        tally_.lastSign = Now::now();
        if (!sent) ++tally_.lost;
    }
}

void CallingPhone::take(const SecureLink::Udalost& event) {
    std::lock_guard lock(mutex_);
    if (std::holds_alternative<SecureLink::Pripraveno>(event)) ++tally_.sessions;
    if (std::holds_alternative<SecureLink::Chyba>(event)) ++tally_.complaints;
    const auto* message = std::get_if<SecureLink::Zprava>(&event);
    if (!message) return;
    if (message->payload.as<MacPayload::Status>()) tally_.isServed = true;
    if (const auto* result = message->payload.as<MacPayload::ToolResult>()) take(*result, message->requestID);
}

void CallingPhone::take(const MacPayload::ToolResult& result, const std::string& requestID) {
    if (unanswered_.erase(requestID) == 0) return;
    ++(result.ok ? tally_.done : tally_.refused);
    tally_.lastSign = tally_.lastAnswer = Now::now();
    if (tally_.answered() == 1) tally_.firstAnswer = tally_.lastAnswer;
}

} // namespace morvex
