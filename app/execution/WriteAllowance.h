#pragma once

#include "foundation/Clock.h"

#include <cstddef>
#include <deque>

namespace morvex {

/// Limits how much may be written within any hour, so that nobody fills the disk. Written bytes count until
/// the end of the minute in which they become an hour old. Main thread.
class WriteAllowance {
  public:
    /// Bytes that a phone may have written within an hour.
    static constexpr std::size_t usual = std::size_t{1024} * 1024 * 1024;

    WriteAllowance(const Clock& clock, std::size_t limit) : clock_(clock), limit_(limit) {}

    /// Counts the bytes before they are written. If they exceed the limit, returns false and counts nothing.
    bool take(std::size_t bytes);

    /// Takes back the last `take`, because nothing was written.
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
    std::deque<Minute> minutes_; ///< minutes with written bytes, the oldest first
};

} // namespace morvex
