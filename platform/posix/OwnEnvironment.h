#pragma once

#include "platform/ports/ProcessLauncher.h"

namespace morvex {

/// The environment that this process was started with. Call it at the start of the program, since the
/// environment must not change meanwhile.
Environment ownEnvironment();

} // namespace morvex
