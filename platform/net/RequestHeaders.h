#pragma once

#include "shared/base/Error.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace morvex {

/// Whether `text` is a token of RFC 9110, section 5.6.2.
[[nodiscard]] bool isToken(std::string_view text);

/// Limit in bytes for all names and values together. A request that exceeds what the HTTP library holds for
/// it would end the program.
inline constexpr std::size_t longestHeaders = std::size_t{32} * 1024;

/// That no header breaks out of its line: names are tokens, values have no line end and no zero byte; and
/// that together they stay within `longestHeaders`. Fails with `NetworkError`.
[[nodiscard]] Result<void> checkHeaders(const std::vector<std::pair<std::string, std::string>>& headers);

} // namespace morvex
