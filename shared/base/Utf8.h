#pragma once

#include <string_view>

namespace morvex {

/// Whether the text is UTF-8 (RFC 3629) to its end: nothing overlong, no surrogates, nothing beyond U+10FFFF.
bool isValidUtf8(std::string_view text);

} // namespace morvex
