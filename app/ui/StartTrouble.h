#pragma once

#include <string>

namespace morvex {

/// Shows in its own window why the program does not start, until the user closes it. Called on the main
/// thread, with a `QApplication` and before its event loop.
void showStartTrouble(const std::string& words);

} // namespace morvex
