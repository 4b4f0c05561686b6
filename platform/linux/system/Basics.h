#pragma once

#include "platform/linux/BoottimeClock.h"
#include "platform/linux/SpawnLauncher.h"
#include "platform/linux/SystemRandom.h"
#include "platform/posix/qt/LockFileInstance.h"

namespace morvex {

// What programs, tests and benchmarks use of this system under names that every system has; `SystemRandom` is
// one already.

using SystemClock = BoottimeClock;
using SystemLauncher = SpawnLauncher;
/// One program a data folder.
using OnlyInstance = LockFileInstance;

} // namespace morvex
