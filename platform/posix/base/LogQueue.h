#pragma once

#include <chrono>
#include <cstddef>
#include <memory>
#include <string>

namespace morvex {

/// Writes lines to a descriptor on a thread of its own, so that nobody waits for whoever reads them. Of what
/// the reader does not take 4,096 lines and 4 MiB wait; more is dropped and counted, and so is what cannot be
/// written. The count is a line as soon as one can be written again. The descriptor stays open as long as the
/// program runs, since a write that never returns may still use it.
class LogQueue {
  public:
    static constexpr std::size_t maxLines = 4096;
    static constexpr std::size_t maxBytes = std::size_t{4} * 1024 * 1024;
    static constexpr std::size_t maxLine = 1024; ///< bytes; of a log, a longer one is cut

    struct Style {
        std::size_t longest = maxLine; ///< bytes of a line
        std::string lost;              ///< what follows the number of lost lines
    };

    /// A log in English.
    explicit LogQueue(int descriptor) : LogQueue(descriptor, {.lost = " log lines were lost"}) {}

    LogQueue(int descriptor, Style style);
    /// Waits a moment for what has not been written.
    ~LogQueue();
    LogQueue(const LogQueue&) = delete;
    LogQueue& operator=(const LogQueue&) = delete;

    /// Takes one line, without its end. From any thread; never waits for the descriptor.
    void write(std::string line);
    /// Until every line was written or dropped; false when the time is over before.
    bool drain(std::chrono::milliseconds time);

  private:
    struct Shared;

    /// The thread owns it too: one that hangs in a write outlives the queue.
    std::shared_ptr<Shared> shared_;
};

} // namespace morvex
