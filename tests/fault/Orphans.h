#pragma once

#include <functional>
#include <set>
#include <sys/types.h>

namespace morvex {

/// Runs `body` in a child of this process, which meanwhile adopts and reaps every process below that loses
/// its parent. True when `body` gave true. To be called while this process has one thread; its tests go on in
/// the child, whose failures are printed there.
[[nodiscard]] bool succeedsAboveOrphans(const std::function<bool()>& body);

/// The living processes that were adopted since. For `body`.
std::set<pid_t> livingOrphans();

/// The children that this process has, dead ones that nobody reaped among them.
std::set<pid_t> ownChildren();

} // namespace morvex
