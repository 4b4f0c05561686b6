#pragma once

#include "relay/RelayLimits.h"

#include <chrono>
#include <cstddef>
#include <cstdint>

namespace morvex {

/// Judges periodically whether a socket is alive. No networking here; owned by the session.
class Vitals {
  public:
    using Moment = std::chrono::steady_clock::time_point;

    enum class Stage { loggingIn, loggedIn, closing };

    /// The observed state of the socket; the counts only grow.
    struct Signs {
        Stage stage = Stage::loggingIn;
        std::uint64_t bytesRead = 0;
        std::uint64_t bytesWritten = 0;
        std::size_t waiting = 0;      ///< bytes to write
        bool isReadingPaused = false; ///< then the silence is caused by the relay
        std::uint64_t framesRead = 0;
        bool isWithinFrame = false; ///< a frame has begun and is not completely read
    };

    enum class Verdict {
        well,
        ping,       ///< silent for a while: send a ping
        late,       ///< no login in time
        dead,       ///< silent too long
        stalled,    ///< reads nothing of what waits for it
        unfinished, ///< does not finish a frame
        lingering   ///< does not finish closing
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
