#pragma once

#include <cstddef>
#include <functional>
#include <optional>

namespace morvex {

/// What goes wrong at one system call of a child.
struct SystemFault {
    enum class Kind {
        none,
        killedBefore,  ///< the child is killed and the call not made
        killedAfter,   ///< the child is killed when the call was made
        fails,         ///< the call is not made and gives `code`
        failsFromThen, ///< likewise this call and all later ones that could need room on the disk
        writesHalf,    ///< a write takes half of its bytes
    };

    Kind kind = Kind::none;
    std::size_t at = 0; ///< the call, counted from 0
    int code = 0;
};

/// How a child with a fault has ended.
struct TracedEnd {
    std::optional<bool> answer; ///< of the work; nothing when the child was killed
    std::size_t calls = 0;      ///< the system calls of the work that were begun
    bool struck = false;        ///< whether there was a call for the fault
};

/// Runs `prepare` in a copy of this process and then, with the fault, the work that it gives. Faults other
/// than the killing ones strike only calls on files, never those for memory. Linux on x86-64.
TracedEnd runTraced(const std::function<std::function<bool()>()>& prepare, SystemFault fault);

} // namespace morvex
