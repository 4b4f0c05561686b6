#pragma once

#include <functional>
#include <set>
#include <sys/types.h>

namespace morvex {

/// Runs `body` in a child of this process, which adopts and reaps all descendants that lose their parent.
/// Returns whether `body` returned true. Call it while this process has only one thread; the tests continue
/// in the child, which prints their failures.
[[nodiscard]] bool succeedsAboveOrphans(const std::function<bool()>& body);

/// The living processes adopted since then. Call within `body`.
std::set<pid_t> livingOrphans();

/// The children of this process, including dead ones that are not reaped yet.
std::set<pid_t> ownChildren();

} // namespace morvex
