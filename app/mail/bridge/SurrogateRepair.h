#pragma once

#include <string>

namespace morvex {

/// Replaces every escape in a JSON text that is half of a surrogate pair, without its other half, by
/// "\ufffd". JavaScript writes one where a text was cut within a character; strict readers refuse the whole
/// document then. Other texts stay as they are.
std::string withoutLoneSurrogates(std::string json);

} // namespace morvex
