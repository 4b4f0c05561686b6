#pragma once

#include "shared/base/Bytes.h"

#include <optional>
#include <string>
#include <string_view>

namespace morvex {

/// Standard base64 with padding (RFC 4648, section 4).
std::string base64Encode(ByteView bytes);
void appendBase64(std::string& out, ByteView bytes);

/// Strict: nothing for a length that is no multiple of four, for a character outside the alphabet (blanks and
/// line breaks too), for padding elsewhere than at the end, and for bits beyond the last byte that are not
/// zero.
std::optional<Bytes> base64Decode(std::string_view text);

} // namespace morvex
