#pragma once

#include "shared/base/Error.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace morvex {

/// Whether `text` is a token of RFC 9110, section 5.6.2.
[[nodiscard]] bool isToken(std::string_view text);

/// That no header breaks out of its line: names are tokens, values have no line end and no zero byte. Fails
/// with `NetworkError`.
[[nodiscard]] Result<void> checkHeaders(const std::vector<std::pair<std::string, std::string>>& headers);

} // namespace morvex
