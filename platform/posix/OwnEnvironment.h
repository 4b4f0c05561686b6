#pragma once

#include "platform/ports/ProcessLauncher.h"

namespace morvex {

/// The environment that this process was started with. For the start of the program: nobody may change it
/// meanwhile.
Environment ownEnvironment();

} // namespace morvex
