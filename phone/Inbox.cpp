#include "phone/Inbox.h"

#include <utility>

namespace morvex {

Task<std::optional<Inbox::Event>> Inbox::next(std::optional<Clock::Duration> until) {
    std::stop_source over;
    std::stop_callback onInterrupt(interrupted_, [over]() mutable { over.request_stop(); });
    std::optional<Clock::TimerId> timer;
    if (until) timer = clock_.at(*until, [over]() mutable { over.request_stop(); });
    auto event = co_await events_.next(over.get_token());
    if (timer) clock_.forget(*timer);
    if (event && (std::holds_alternative<Line>(*event) || std::holds_alternative<EndOfInput>(*event)))
        isLineExpected_ = false;
    co_return event;
}

Task<void> Inbox::forward(EventStream<SecureLink::Udalost>& from, std::stop_token stop) {
    while (auto told = co_await from.next(stop))
        std::visit([this](auto& held) { push(std::move(held)); }, *told);
}

Task<void> Inbox::forward(EventStream<RelayLink::Udalost>& from, std::stop_token stop) {
    while (auto told = co_await from.next(stop)) push(*std::move(told));
}

} // namespace morvex
