#pragma once

#include "platform/linux/BoottimeClock.h"
#include "platform/posix/qt/LockFileInstance.h"

namespace morvex {

using SystemClock = BoottimeClock;
/// One program a data folder.
using OnlyInstance = LockFileInstance;

} // namespace morvex
