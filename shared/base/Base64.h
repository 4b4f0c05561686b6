#pragma once

#include "shared/base/Bytes.h"

#include <optional>
#include <string>
#include <string_view>

namespace morvex {

/// Standard base64 with padding (RFC 4648, section 4).
std::string base64Encode(ByteView bytes);
void appendBase64(std::string& out, ByteView bytes);

/// Strict: returns nothing for a length that is not a multiple of four, for a character outside the alphabet
/// (also blanks and line breaks), for padding anywhere but at the end, and when the unused bits of the last
/// digit are not zero.
std::optional<Bytes> base64Decode(std::string_view text);

} // namespace morvex
