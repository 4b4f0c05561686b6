#pragma once

#include <string>
#include <string_view>

namespace morvex {

/// RFC 3986, section 2.1: every byte but the unreserved characters and those of `kept` as %XX.
std::string percentEncoded(std::string_view text, std::string_view kept = {});

} // namespace morvex
