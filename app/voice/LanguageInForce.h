#pragma once

#include "platform/ports/UserDefaults.h"

#include <string>

namespace morvex {

/// The language of the fixed texts. It is Czech until the phone has sent a language for the first time,
/// whatever was chosen on this computer before; from then on it is the stored code. A language without a
/// table of texts gets the Czech ones.
std::string languageInForce(const UserDefaults& defaults);

} // namespace morvex
