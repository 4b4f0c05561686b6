#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace morvex {

/// The address of a custom app in its normal form: without trailing slashes, and with the path "/api/mcp" if
/// it had none. `text` is trimmed. Returns nothing unless it is a URI (RFC 3986) with a host, without a user
/// name, and with the scheme https in any case. A URI has ASCII letters only, and nothing is encoded here: a
/// host with other letters has to be written as "https://xn--…", other letters of a path as "%C5%99".
std::optional<std::string> normalizedAddress(std::string_view text);

} // namespace morvex
