#pragma once

#include "shared/base/Error.h"

#include <string>
#include <string_view>

namespace morvex {

/// The parts of a WebSocket address (RFC 6455, section 3) that a connection needs.
struct WebSocketUrl {
    enum class Security { plain, tls };

    Security security = Security::plain;
    std::string host; ///< a name, an IPv4 address, or an IPv6 address without its brackets
    std::string port; ///< decimal, never empty
    /// For the header `Host`: with brackets for IPv6, and with the port unless it is the default.
    std::string authority;
    std::string target; ///< path and query, begins with "/"

    /// Strict: ws or wss, ASCII only. Refuses user names, fragments, blanks and control characters, zones of
    /// IPv6 addresses, and ports outside 1 to 65535. Fails with `NetworkError`.
    static Result<WebSocketUrl> parse(std::string_view text);

    bool operator==(const WebSocketUrl&) const = default;
};

} // namespace morvex
