#pragma once

#include "foundation/Clock.h"
#include "foundation/EventStream.h"
#include "shared-apple/RelayLink.h"
#include "shared-apple/SecureLink.h"

#include <optional>
#include <stop_token>
#include <string>
#include <utility>
#include <variant>

namespace morvex {

/// Everything that a command can wait for, in order of arrival: events of the link and lines that the user
/// types. Events may be pushed from any thread; there is one consumer, on the phone's executor.
class Inbox {
  public:
    /// A typed line, without its end.
    struct Line {
        std::string text;
    };

    /// There will be no more lines.
    struct EndOfInput {};

    using Event = std::variant<SecureLink::Stav, SecureLink::Zprava, SecureLink::Chyba,
                               SecureLink::Pripraveno, RelayLink::Udalost, Line, EndOfInput>;

    /// `interrupted` ends every wait.
    Inbox(Clock& clock, std::stop_token interrupted) : clock_(clock), interrupted_(std::move(interrupted)) {}

    void push(Event event) { events_.push(std::move(event)); }

    /// The next event. Nothing when `sinceBoot()` has reached `until`, or when the user interrupts.
    Task<std::optional<Event>> next(std::optional<Clock::Duration> until);

    /// Returns true if no line was expected before. From now on one is expected, until `next` returns a line
    /// or the end of the input.
    bool expectLine() { return !std::exchange(isLineExpected_, true); }

    [[nodiscard]] bool isInterrupted() const { return interrupted_.stop_requested(); }

    /// Moves the events of a link into the inbox until `stop`.
    Task<void> forward(EventStream<SecureLink::Udalost>& from, std::stop_token stop);
    Task<void> forward(EventStream<RelayLink::Udalost>& from, std::stop_token stop);

    [[nodiscard]] Clock& clock() const { return clock_; }

  private:
    Clock& clock_;
    std::stop_token interrupted_;
    EventStream<Event> events_;
    bool isLineExpected_ = false;
};

} // namespace morvex
