#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace morvex {

/// Whether the text is UTF-8 (RFC 3629) to its end: nothing overlong, no surrogates, nothing beyond U+10FFFF.
bool isValidUtf8(std::string_view text);

bool isAscii(std::string_view text);

/// The longest beginning of at most `count` bytes that does not end within a code point.
std::string firstBytes(std::string_view text, std::size_t count);

/// The same with "…" behind it when something is missing.
std::string clipped(std::string_view text, std::size_t count);

/// The text with U+FFFD in place of every invalid sequence, as much of it as begins a valid one counting as
/// one (Unicode, section 3.9).
std::string repairUtf8(std::string_view text);

} // namespace morvex
