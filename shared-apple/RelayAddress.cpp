#include "shared-apple/RelayAddress.h"

#include "foundation/Text.h"
#include "shared/base/Ascii.h"
#include "shared/wire/ProtocolVersion.h"
#include "shared/wire/RelayCalls.h"

#include <boost/url.hpp>

#include <algorithm>

namespace morvex {

namespace {

/// The base address with `path` appended to its path, without query and fragment.
boost::urls::url below(const std::string& base, std::string_view path) {
    boost::urls::url url(boost::urls::parse_uri_reference(base).value());
    url.remove_query();
    url.remove_fragment();
    std::string joined(url.encoded_path());
    if (joined.empty() || joined.back() != '/') joined += '/';
    url.set_encoded_path(joined.append(path));
    return url;
}

using Scheme = boost::urls::scheme;

bool isUsable(const boost::urls::url_view& url) {
    const auto scheme = url.scheme_id();
    const std::string host(url.encoded_host());
    const bool hasPort = !url.has_port() || url.port_number() != 0;
    return (scheme == Scheme::http || scheme == Scheme::https) && !url.has_userinfo() && hasPort &&
           std::ranges::all_of(host, [](char letter) {
               return isAsciiLetterOrDigit(letter) || std::string_view("-._~[]:").contains(letter);
           });
}

/// RFC 6761: "localhost" and the names below it are this computer. So is the unspecified address, which
/// stands for all addresses of the computer.
bool isThisComputer(const boost::urls::url_view& url) {
    const auto isOwn = [](const auto& address) { return address.is_loopback() || address.is_unspecified(); };
    if (url.host_type() == boost::urls::host_type::ipv4) return isOwn(url.host_ipv4_address());
    if (url.host_type() == boost::urls::host_type::ipv6) {
        const auto address = url.host_ipv6_address();
        if (!address.is_v4_mapped()) return isOwn(address);
        const auto bytes = address.to_bytes();
        return isOwn(boost::urls::ipv4_address({bytes[12], bytes[13], bytes[14], bytes[15]}));
    }
    auto name = fold(url.host());
    while (name.ends_with('.')) name.pop_back();
    return name == "localhost" || name.ends_with(".localhost");
}

/// "relay.example:8787" counts as having no scheme, though the syntax of URIs would allow to read one.
std::size_t lengthOfScheme(std::string_view typed) {
    const auto end = typed.find_first_of(":/");
    if (end == std::string_view::npos) return 0;
    const auto name = fold(typed.substr(0, end));
    const bool isKnown = name == "http" || name == "https";
    return isKnown || typed.substr(end).starts_with(":/") ? end + 1 : 0;
}

/// The typed host and the rest with the scheme that they need; empty when even that is not a usable address.
std::string corrected(std::string_view typed) {
    typed.remove_prefix(lengthOfScheme(typed));
    typed.remove_prefix(std::min(typed.find_first_not_of('/'), typed.size()));
    for (const std::string scheme : {"https://", "http://"}) {
        const auto text = scheme + std::string(typed);
        if (!RelayAddress::parse(text)) return {};
        const auto url = boost::urls::parse_uri_reference(text).value();
        if (!isUsable(url)) return {};
        // A relay on this computer uses no TLS unless it was given a certificate.
        if (scheme == "http://" || !isThisComputer(url)) return text;
    }
    return {};
}

} // namespace

Sentence RelayAddressRefused::popis() const {
    if (corrected.empty()) return RelayAddress::nonsense;
    return "Adresa relaye začíná https:// nebo http://. Napiš „{adresa}“."_sentence(corrected);
}

bool RelayAddress::isThisComputer() const {
    const auto url = boost::urls::parse_uri_reference(text_);
    return url && morvex::isThisComputer(*url);
}

Result<RelayAddress> RelayAddress::entered(std::string_view typed) {
    const auto text = trim(typed);
    auto address = parse(text);
    if (address && isUsable(boost::urls::parse_uri_reference(text).value())) return *std::move(address);
    return fail(RelayAddressRefused{corrected(text)});
}

std::optional<RelayAddress> RelayAddress::parse(std::string_view text) {
    auto parsed = boost::urls::parse_uri_reference(text);
    if (!parsed || parsed->encoded_host().empty()) return std::nullopt;
    // What the parser cannot read as host or port it takes for a path ("host:port", "[::1]x").
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
