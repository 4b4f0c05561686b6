#pragma once

#include "platform/ports/UserDefaults.h"

#include <string>

namespace morvex {

/// The language of the fixed texts: Czech until the phone has sent a language for the first time, whatever
/// was chosen on this computer before; from then on the code that is kept. Texts without a table for it stay
/// Czech.
std::string languageInForce(const UserDefaults& defaults);

} // namespace morvex
