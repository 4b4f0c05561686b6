#include "platform/net/WebSocketUrl.h"

#include "platform/ports/NetworkError.h"
#include "shared/base/Ascii.h"
#include "shared/base/SystemTrouble.h"

#include <boost/asio/ip/address_v6.hpp>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>

namespace morvex {

namespace {

struct Authority {
    std::string host;
    std::optional<std::string> port;
};

bool isTargetCharacter(char character) {
    return isAsciiLetterOrDigit(character) || std::string_view("-._~:/?[]@!$&'()*+,;=%").contains(character);
}

bool isName(std::string_view host) {
    return !host.empty() && std::ranges::all_of(host, [](char character) {
        return isAsciiLetterOrDigit(character) || std::string_view("-._~").contains(character);
    });
}

bool isIpv6(const std::string& host) {
    boost::system::error_code error;
    boost::asio::ip::make_address_v6(host, error);
    // The system's function below looks no further than to the first zero byte, and takes a zone (RFC 4007).
    return !error && host.find_first_of(std::string_view("%\0", 2)) == std::string::npos;
}

bool equalsLowerCase(std::string_view text, std::string_view lowerCase) {
    return std::ranges::equal(text, lowerCase, {}, [](char character) {
        return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
    });
}

/// Removes the part before `separator`, and the separator, from `text` and returns that part.
std::optional<std::string_view> takeUpTo(std::string_view& text, std::string_view separator) {
    auto end = text.find(separator);
    if (end == std::string_view::npos) return std::nullopt;
    auto taken = text.substr(0, end);
    text.remove_prefix(end + separator.size());
    return taken;
}

std::optional<WebSocketUrl::Security> securityOf(std::string_view scheme) {
    if (equalsLowerCase(scheme, "ws")) return WebSocketUrl::Security::plain;
    if (equalsLowerCase(scheme, "wss")) return WebSocketUrl::Security::tls;
    return std::nullopt;
}

std::optional<std::string> readPort(std::string_view text) {
    std::uint16_t port = 0;
    auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), port);
    if (error != std::errc{} || end != text.data() + text.size() || port == 0) return std::nullopt;
    return std::to_string(port);
}

std::optional<Authority> readAuthority(std::string_view text) {
    Authority authority;
    if (text.starts_with('[')) {
        text.remove_prefix(1);
        auto host = takeUpTo(text, "]");
        if (!host || !isIpv6(std::string(*host))) return std::nullopt;
        authority.host = *host;
    } else {
        authority.host = text.substr(0, text.find(':'));
        if (!isName(authority.host)) return std::nullopt;
        text.remove_prefix(authority.host.size());
    }
    if (text.empty()) return authority;
    if (!text.starts_with(':')) return std::nullopt;
    authority.port = readPort(text.substr(1));
    return authority.port ? std::optional(authority) : std::nullopt;
}

std::optional<WebSocketUrl> read(std::string_view text) {
    auto scheme = takeUpTo(text, "://");
    auto security = scheme ? securityOf(*scheme) : std::nullopt;
    if (!security) return std::nullopt;

    auto targetStart = std::min(text.find_first_of("/?"), text.size());
    auto authority = readAuthority(text.substr(0, targetStart));
    std::string target(text.substr(targetStart));
    if (!authority || !std::ranges::all_of(target, isTargetCharacter)) return std::nullopt;
    if (!target.starts_with('/')) target.insert(0, "/");

    std::string usualPort = *security == WebSocketUrl::Security::tls ? "443" : "80";
    auto port = authority->port.value_or(usualPort);
    auto shownHost = authority->host.contains(':') ? "[" + authority->host + "]" : authority->host;
    return WebSocketUrl{.security = *security,
                        .host = authority->host,
                        .port = port,
                        .authority = port == usualPort ? shownHost : shownHost + ":" + port,
                        .target = std::move(target)};
}

} // namespace

Result<WebSocketUrl> WebSocketUrl::parse(std::string_view text) {
    if (auto url = read(text)) return *std::move(url);
    return fail(NetworkError{popis(SystemTrouble::badAddress)});
}

} // namespace morvex
