#pragma once

#include "foundation/Clock.h"

#include <cstddef>
#include <deque>

namespace morvex {

/// How much may be written within an hour, so that nobody fills the disk. The hour is the last one at any
/// moment; what was written counts until the end of the minute in which it is an hour old. Main thread.
class WriteAllowance {
  public:
    /// Bytes that a phone may have written within an hour.
    static constexpr std::size_t usual = std::size_t{1024} * 1024 * 1024;

    WriteAllowance(const Clock& clock, std::size_t limit) : clock_(clock), limit_(limit) {}

    /// Counts the bytes before they are written. False, and nothing is counted, when they are too many.
    bool take(std::size_t bytes);

    /// Of what was taken last, nothing was written after all.
    void giveBack(std::size_t bytes);

  private:
    struct Minute {
        Clock::Duration begin;
        std::size_t bytes;
    };

    void forgetOld();

    const Clock& clock_;
    std::size_t limit_;
    std::size_t taken_ = 0;
    std::deque<Minute> minutes_; ///< with something in them, the oldest first
};

} // namespace morvex
