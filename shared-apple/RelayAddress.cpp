#include "shared-apple/RelayAddress.h"

#include "shared/wire/ProtocolVersion.h"
#include "shared/wire/RelayCalls.h"

#include <boost/url.hpp>

namespace morvex {

namespace {

/// The base with `path` behind its own path, without query and fragment.
boost::urls::url below(const std::string& base, std::string_view path) {
    boost::urls::url url(boost::urls::parse_uri_reference(base).value());
    url.remove_query();
    url.remove_fragment();
    std::string joined(url.encoded_path());
    if (joined.empty() || joined.back() != '/') joined += '/';
    url.set_encoded_path(joined.append(path));
    return url;
}

} // namespace

std::optional<RelayAddress> RelayAddress::parse(std::string_view text) {
    auto parsed = boost::urls::parse_uri_reference(text);
    if (!parsed || parsed->encoded_host().empty()) return std::nullopt;
    // The parser takes what cannot belong to a host or a port for a path ("host:port", "[::1]x").
    if (auto path = parsed->encoded_path(); !path.empty() && path.front() != '/') return std::nullopt;
    return RelayAddress(std::string(text));
}

std::string RelayAddress::call(std::string_view path) const {
    return std::string(below(text_, path).buffer());
}

std::string RelayAddress::socket() const {
    auto url = below(text_, relayPaths::socket);
    url.set_scheme(url.scheme_id() == boost::urls::scheme::https ? "wss" : "ws");
    url.set_encoded_query("v=" + ProtocolVersion::current.text());
    return std::string(url.buffer());
}

} // namespace morvex
