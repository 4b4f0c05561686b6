#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace morvex {

/// Whether the whole text is UTF-8 (RFC 3629): nothing overlong, no surrogates, nothing above U+10FFFF.
bool isValidUtf8(std::string_view text);

bool isAscii(std::string_view text);

/// The longest prefix of at most `count` bytes that does not end within a code point.
std::string firstBytes(std::string_view text, std::size_t count);

/// Like `firstBytes`, with "…" appended when something was cut off.
std::string clipped(std::string_view text, std::size_t count);

/// Replaces every invalid sequence by U+FFFD; the longest part that begins a valid sequence counts as one
/// (Unicode, section 3.9).
std::string repairUtf8(std::string_view text);

} // namespace morvex
