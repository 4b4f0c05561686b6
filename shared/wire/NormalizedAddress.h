#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace morvex {

/// The address under which a custom app is reached: without slashes at its end, and with the path "/api/mcp"
/// where it had none. `text` is trimmed. Nothing unless it is a URI (RFC 3986) with a host and the scheme
/// https, in any case of letters. Such a URI has letters of ASCII only, and nothing is encoded here: the
/// address of a host with other letters is written as "https://xn--…", other letters of a path as "%C5%99".
std::optional<std::string> normalizedAddress(std::string_view text);

} // namespace morvex
