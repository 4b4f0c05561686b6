#include "shared/wire/NormalizedAddress.h"

#include <boost/url.hpp>

namespace morvex {

std::optional<std::string> normalizedAddress(std::string_view text) {
    while (text.ends_with('/')) text.remove_suffix(1);
    auto parsed = boost::urls::parse_uri(text);
    if (!parsed || parsed->scheme_id() != boost::urls::scheme::https || parsed->encoded_host().empty() ||
        parsed->has_userinfo())
        return std::nullopt;
    boost::urls::url url(*parsed);
    auto path = url.encoded_path();
    if (path.empty() || path == "/") url.set_encoded_path("/api/mcp");
    // What the parser cannot read as host or port it takes for a path ("host:port", "[::1]x").
    if (!url.encoded_path().starts_with('/')) return std::nullopt;
    return std::string(url.buffer());
}

} // namespace morvex
