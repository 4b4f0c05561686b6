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

/// A phone that sends calls as fast as its link takes them and never gives one up. Its functions block; they
/// are called from one thread, which is not the link's.
class CallingPhone {
  public:
    using Time = std::chrono::steady_clock::time_point;
    /// Gives the call with this number.
    using Calls = std::function<MacPayload::ToolCall(std::size_t)>;

    struct Tally {
        [[nodiscard]] std::size_t answered() const { return done + refused; }

        std::size_t sessions = 0;   ///< a second one means that one end has connected again
        std::size_t complaints = 0; ///< what the link told as an error
        bool isServed = false;      ///< the computer has told its first status

        std::size_t sent = 0;
        std::size_t lost = 0; ///< the link did not take them
        std::size_t done = 0;
        std::size_t refused = 0;
        Time firstAnswer;
        Time lastAnswer;
        Time lastSign; ///< of progress: calls were asked for, one left, an answer came
    };

    /// `executor` is the link's. Starts the link.
    CallingPhone(Executor& executor, std::shared_ptr<SecureLink> link);
    ~CallingPhone();
    CallingPhone(const CallingPhone&) = delete;
    CallingPhone& operator=(const CallingPhone&) = delete;

    /// Sends so many calls, one behind the other, in the background.
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
    std::set<std::string> unanswered_; ///< requests, so that a second answer does not count
};

} // namespace morvex
