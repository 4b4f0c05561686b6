#pragma once

#include "relay/RelayLimits.h"

#include <chrono>
#include <cstddef>
#include <cstdint>

namespace morvex {

/// Judges from time to time whether a socket lives. No network here; owned by the session.
class Vitals {
  public:
    using Moment = std::chrono::steady_clock::time_point;

    enum class Stage { loggingIn, loggedIn, closing };

    /// What can be seen of the socket now; the counts only grow.
    struct Signs {
        Stage stage = Stage::loggingIn;
        std::uint64_t bytesRead = 0;
        std::uint64_t bytesWritten = 0;
        std::size_t waiting = 0;      ///< bytes to write
        bool isReadingPaused = false; ///< then silence is of our own making
        std::uint64_t framesRead = 0;
        bool isWithinFrame = false; ///< one has begun and is not read to its end
    };

    enum class Verdict {
        well,
        ping,       ///< silent for a while: ask
        late,       ///< no login in time
        dead,       ///< silent too long
        stalled,    ///< takes nothing of what waits for it
        unfinished, ///< does not come to the end of a frame
        lingering   ///< does not finish to close
    };

    Vitals(const RelayLimits& limits, Moment start)
        : limits_(limits),
          stageSince_(start),
          heardAt_(start),
          tookAt_(start),
          pingedAt_(start),
          frameSince_(start) {}

    Verdict judge(const Signs& signs, Moment now);

  private:
    void note(const Signs& signs, Moment now);

    const RelayLimits& limits_;
    Signs last_;
    Moment stageSince_;
    Moment heardAt_;
    Moment tookAt_;
    Moment pingedAt_;
    Moment frameSince_;
};

} // namespace morvex
