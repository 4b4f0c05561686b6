#include "tests/support/RealPhone.h"

#include "tests/support/Await.h"

#include <utility>

namespace morvex {

namespace {

constexpr std::chrono::seconds patience{30};

Date realTime() {
    return std::chrono::time_point_cast<Date::duration>(std::chrono::system_clock::now());
}

} // namespace

RealPhone::RealPhone(std::shared_ptr<const DeviceIdentity> identita, PairedPeer mac)
    : clock_(realTime()),
      link_(SecureLink::create(std::move(identita), std::move(mac), DeviceRole::phone,
                               {{network_.executor(), clock_, sockets_}, random_})
                .value()) {
    network_.executor().post([this] { scope_.spawn(listen(this, scope_.token())); });
    await(network_.executor(), link_->spustit());
}

RealPhone::~RealPhone() {
    await(network_.executor(), end(this));
}

Task<void> RealPhone::end(RealPhone* self) {
    co_await self->link_->zastavit();
    self->scope_.stop();
    co_await self->scope_.join();
}

Task<void> RealPhone::listen(RealPhone* self, std::stop_token stop) {
    while (auto event = co_await self->link_->udalosti().next(stop)) self->take(*event);
}

Task<void> RealPhone::send(std::shared_ptr<SecureLink> link, MacPayload payload, std::string requestID) {
    (void)co_await link->poslat(std::move(payload), std::move(requestID));
}

void RealPhone::take(const SecureLink::Udalost& event) {
    const auto* message = std::get_if<SecureLink::Zprava>(&event);
    if (!message) return;
    std::unique_lock lock(mutex_);
    if (message->payload.as<MacPayload::Status>()) isServed_ = true;
    const auto* result = message->payload.as<MacPayload::ToolResult>();
    if (result && message->requestID == awaited_) {
        resultAt_ = std::chrono::steady_clock::now();
        result_ = *result;
    }
    lock.unlock();
    changed_.notify_all();
}

bool RealPhone::isServed(std::chrono::milliseconds time) {
    std::unique_lock lock(mutex_);
    return changed_.wait_for(lock, time, [this] { return isServed_; });
}

std::optional<MacPayload::ToolResult> RealPhone::call(std::string tool, std::string argumentsJSON) {
    auto requestID = "request-" + std::to_string(++lastRequest_);
    {
        std::lock_guard lock(mutex_);
        awaited_ = requestID;
        result_.reset();
    }
    network_.executor().post(
        [this, tool = std::move(tool), json = std::move(argumentsJSON), requestID]() mutable {
            calledAt_ = std::chrono::steady_clock::now();
            MacPayload payload{MacPayload::ToolCall{std::move(tool), std::move(json)}};
            scope_.spawn(send(link_, std::move(payload), std::move(requestID)));
        });
    std::unique_lock lock(mutex_);
    changed_.wait_for(lock, patience, [this] { return result_.has_value(); });
    return std::exchange(result_, std::nullopt);
}

void RealPhone::cut() {
    forgetSession();
    sockets_.cut();
}

void RealPhone::forgetSession() {
    std::lock_guard lock(mutex_);
    isServed_ = false;
}

void RealPhone::pass(std::chrono::seconds time) {
    clock_.advance(time);
    clock_.setWallClock(realTime());
}

} // namespace morvex
