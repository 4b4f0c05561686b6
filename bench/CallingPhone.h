#pragma once

#include "foundation/TaskScope.h"
#include "shared-apple/SecureLink.h"

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <mutex>
#include <set>
#include <string>

namespace morvex {

/// A phone that sends calls as fast as its link accepts them and never gives one up. Its functions block;
/// call them from one thread that is not the link's.
class CallingPhone {
  public:
    using Time = std::chrono::steady_clock::time_point;
    /// Returns the call with this number.
    using Calls = std::function<MacPayload::ToolCall(std::size_t)>;

    struct Tally {
        [[nodiscard]] std::size_t answered() const { return done + refused; }

        std::size_t sessions = 0;   ///< a second one means that one end has reconnected
        std::size_t complaints = 0; ///< errors reported by the link
        bool isServed = false;      ///< the computer has sent its first status

        std::size_t sent = 0;
        std::size_t lost = 0; ///< the link did not accept them
        std::size_t done = 0;
        std::size_t refused = 0;
        Time firstAnswer;
        Time lastAnswer;
        Time lastSign; ///< time of the last progress: calls requested, a call sent, an answer received
    };

    /// `executor` is that of the link. Starts the link.
    CallingPhone(Executor& executor, std::shared_ptr<SecureLink> link);
    ~CallingPhone();
    CallingPhone(const CallingPhone&) = delete;
    CallingPhone& operator=(const CallingPhone&) = delete;

    /// Sends `count` calls one after the other, in the background.
    void call(std::size_t count, Calls calls);

    [[nodiscard]] Tally tally() const;

  private:
    static Task<void> end(CallingPhone* self);
    Task<void> listen(std::stop_token stop);
    Task<void> send(std::size_t count, Calls calls);
    void take(const SecureLink::Udalost& event);
    void take(const MacPayload::ToolResult& result, const std::string& requestID);

    Executor& executor_;
    std::shared_ptr<SecureLink> link_;
    TaskScope scope_;

    mutable std::mutex mutex_;
    Tally tally_;
    std::set<std::string> unanswered_; ///< request ids, so that a second answer does not count
};

} // namespace morvex
