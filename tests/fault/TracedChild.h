#pragma once

#include <cstddef>
#include <functional>
#include <optional>

namespace morvex {

/// A failure at one system call of a child.
struct SystemFault {
    /// Each kind applies to calls of one sort, so that no two faults have the same effect in different
    /// places.
    enum class Kind {
        none,
        killed,        ///< after a call on files
        killedHalfway, ///< after a write of half of its bytes
        fails,         ///< a call on files is not made and returns `code`
        diskFull,      ///< the same for a call that may need disk space, and for all later ones
        diskBroken,    ///< the same for a call on files, and for all later ones
        writesHalf,    ///< a write writes half of its bytes
    };

    Kind kind = Kind::none;
    std::size_t at = 0; ///< index of the call among those of its sort, from 0
    int code = 0;
};

/// How a child with a fault has ended.
struct TracedEnd {
    std::optional<bool> answer; ///< result of the work; nothing if the child ended before
    bool struck = false;        ///< whether the fault found its call
};

/// The part of a child in which the fault occurs.
enum class FaultTime { work, preparation };

/// Runs `prepare` in a copy of this process and then the work that it returns; one of them has the fault.
/// Calls of the runtime, such as those for memory or locks, do not count as calls on files. Linux on x86-64.
TracedEnd runTraced(const std::function<std::function<bool()>()>& prepare, SystemFault fault,
                    FaultTime time = FaultTime::work);

} // namespace morvex
