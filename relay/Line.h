#pragma once

#include "relay/Origin.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace morvex {

/// How a socket ends: the last frame, if any, and the close code of RFC 6455, section 7.4.1.
struct Ending {
    std::string lastFrame;
    std::uint16_t closeCode = 1000;
    bool freesMemory = false; ///< its memory is needed at once, if necessary without a closing handshake
};

/// The socket of a logged-in device from the switchboard's point of view. None of these calls may call back
/// into the switchboard.
class Line {
  public:
    virtual ~Line() = default;

    /// Queues a frame. Frames are sent in the order of the calls.
    virtual void deliver(std::string frame) = 0;
    /// Bytes that were queued and not yet sent.
    [[nodiscard]] virtual std::size_t waiting() const = 0;
    /// Memory of this socket in bytes: queued frames and an unfinished incoming frame.
    [[nodiscard]] virtual std::size_t held() const = 0;
    /// The site of its address, which shares one part of the memory.
    [[nodiscard]] virtual Prefix site() const = 0;

    virtual void pauseReading() = 0;
    virtual void resumeReading() = 0;

    /// Drops the queue and the unfinished incoming frame, sends the last frame and closes. Frames that arrive
    /// later are ignored. A line that is already closing may still be asked to free memory.
    virtual void end(Ending ending) = 0;
};

} // namespace morvex
