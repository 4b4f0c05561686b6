#pragma once

#include "relay/Origin.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace morvex {

/// How a socket comes to its end: the last frame, if any, and the close code of RFC 6455, section 7.4.1.
struct Ending {
    std::string lastFrame;
    std::uint16_t closeCode = 1000;
    bool freesMemory = false; ///< what it holds is needed at once, if need be without a closing handshake
};

/// One socket of a logged-in device, as the switchboard sees it. None of these calls back into the
/// switchboard.
class Line {
  public:
    virtual ~Line() = default;

    /// Queues a frame. Frames leave in the order in which they were given.
    virtual void deliver(std::string frame) = 0;
    /// Bytes that were given and have not left.
    [[nodiscard]] virtual std::size_t waiting() const = 0;
    /// Bytes that this socket costs: waiting ones and an unfinished incoming frame.
    [[nodiscard]] virtual std::size_t held() const = 0;
    /// Where it comes from, as far as memory is shared out.
    [[nodiscard]] virtual Prefix site() const = 0;

    virtual void pauseReading() = 0;
    virtual void resumeReading() = 0;

    /// Drops what waits and what has come of a frame, sends the last frame and closes. Frames that arrive
    /// afterwards are nobody's. One that is closing already may still be asked to free memory.
    virtual void end(Ending ending) = 0;
};

} // namespace morvex
