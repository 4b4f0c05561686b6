#pragma once

#include <cstddef>
#include <functional>
#include <optional>

namespace morvex {

/// What goes wrong at one system call of a child.
struct SystemFault {
    /// Each strikes among calls of one sort, so that no two faults are the same in another place.
    enum class Kind {
        none,
        killed,        ///< when a call on files was made
        killedHalfway, ///< when a write took half of its bytes
        fails,         ///< a call on files is not made and gives `code`
        diskFull,      ///< likewise a call that could need room on the disk, and all later ones
        diskBroken,    ///< likewise a call on files, and all later ones
        writesHalf,    ///< a write takes half of its bytes
    };

    Kind kind = Kind::none;
    std::size_t at = 0; ///< the call among those of its sort, counted from 0
    int code = 0;
};

/// How a child with a fault has ended.
struct TracedEnd {
    std::optional<bool> answer; ///< of the work; nothing when the child ended before it had one
    bool struck = false;        ///< whether there was a call for the fault
};

/// Which part of a child meets the fault.
enum class FaultTime { work, preparation };

/// Runs `prepare` in a copy of this process and then the work that it gives, one of them with the fault.
/// Calls of the runtime, for memory or locks of threads say, are no calls on files. Linux on x86-64.
TracedEnd runTraced(const std::function<std::function<bool()>()>& prepare, SystemFault fault,
                    FaultTime time = FaultTime::work);

} // namespace morvex
