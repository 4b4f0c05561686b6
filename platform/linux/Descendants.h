#pragma once

#include "foundation/FileDescriptor.h"

#include <sys/types.h>
#include <vector>

namespace morvex {

/// The processes that the leader of a group has started, and those that they have started, without the
/// members of its group: as far as the line of living parents leads, so that one whose own parent has ended
/// is not found. Each is a pidfd: a signal reaches it or nobody. What starts meanwhile may be missing.
std::vector<FileDescriptor> descendantsOutsideGroup(pid_t leader);

} // namespace morvex
