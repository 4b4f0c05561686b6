#pragma once

#include <string>
#include <string_view>

namespace morvex {

/// Names the content that the user approves: the first 8 bytes of the SHA-256 digest of `detail`, as 16
/// lower-case hexadecimal digits.
std::string contentHash(std::string_view detail);

} // namespace morvex
