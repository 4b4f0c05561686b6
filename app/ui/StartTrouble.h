#pragma once

#include <string>

namespace morvex {

/// Shows in a window of its own why the program does not start, until the person has closed it. On the main
/// thread, with a `QApplication` and before its loop.
void showStartTrouble(const std::string& words);

} // namespace morvex
