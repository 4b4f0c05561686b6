#include "relay/HttpRules.h"

#include "shared/base/Base64.h"

#include <boost/beast/core/string.hpp>
#include <boost/beast/http/field.hpp>
#include <boost/beast/http/rfc7230.hpp>
#include <boost/beast/http/verb.hpp>

#include <algorithm>
#include <cctype>
#include <cstddef>

namespace morvex::httpRules {

namespace beast = boost::beast;
namespace http = boost::beast::http;
using http::field;

namespace {

constexpr unsigned currentVersion = 11;
constexpr std::size_t socketKeySize = 16;
constexpr std::string_view socketVersion = "13";

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isLetterOrDigit(char c) {
    return isDigit(c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool isNumber(std::string_view text) {
    return !text.empty() && std::ranges::all_of(text, isDigit);
}

/// Whether `host` is a reg-name or IPv4address (RFC 3986, section 3.2.2), judged by its characters only.
bool isName(std::string_view host) {
    return std::ranges::all_of(
        host, [](char c) { return isLetterOrDigit(c) || std::string_view{"-._~%!$&'()*+,;="}.contains(c); });
}

/// Whether `host` is an IP-literal, including the brackets.
bool isLiteral(std::string_view host) {
    if (host.size() < 3 || !host.starts_with('[') || !host.ends_with(']')) return false;
    host = host.substr(1, host.size() - 2);
    return std::ranges::all_of(
        host, [](char c) { return isLetterOrDigit(c) || std::string_view{":.-_~!$&'()*+,;="}.contains(c); });
}

/// Whether `text` is uri-host [ ":" port ]. It may be empty, for a target without an authority (RFC 9112,
/// section 3.2).
bool isHostAndPort(std::string_view text) {
    const auto end = text.find(']');
    const auto colon = text.find(':', end == std::string_view::npos ? 0 : end);
    const auto host = text.substr(0, colon);
    if (colon != std::string_view::npos && !std::ranges::all_of(text.substr(colon + 1), isDigit))
        return false;
    return host.starts_with('[') ? isLiteral(host) : isName(host);
}

bool hasGoodHost(const Head& head) {
    const auto count = head.count(field::host);
    if (count == 0) return head.version() < currentVersion;
    return count == 1 && isHostAndPort(head[field::host]);
}

/// The part after the scheme; nothing for a target that is not in absolute form (RFC 9112, section 3.2.2).
std::optional<std::string_view> behindScheme(std::string_view target) {
    for (const std::string_view scheme : {"http://", "https://"})
        if (beast::iequals(target.substr(0, scheme.size()), scheme)) return target.substr(scheme.size());
    return std::nullopt;
}

bool hasGoodTarget(const Head& head) {
    const std::string_view target = head.target();
    if (target.starts_with('/')) return true;
    if (const auto rest = behindScheme(target)) {
        const auto authority = rest->substr(0, rest->find_first_of("/?"));
        return !authority.empty() && isHostAndPort(authority);
    }
    return target == "*" && head.method() == http::verb::options;
}

bool hasGoodLength(const Head& head) {
    const auto count = head.count(field::content_length);
    return count == 0 || (count == 1 && isNumber(head[field::content_length]));
}

/// Only the chunked transfer coding is supported (RFC 9112, section 6.1).
std::optional<CallRefusal> faultOfEncoding(const Head& head) {
    const auto [begin, end] = head.equal_range(field::transfer_encoding);
    if (begin == end) return std::nullopt;
    std::size_t codings = 0;
    std::size_t chunked = 0;
    bool isChunkedLast = false;
    for (auto line = begin; line != end; ++line) {
        for (const auto& [name, parameters] : http::ext_list{line->value()}) {
            isChunkedLast = beast::iequals(name, "chunked") && parameters.begin() == parameters.end();
            chunked += isChunkedLast ? 1 : 0;
            ++codings;
        }
    }
    const bool hasAnEnd = head.version() == currentVersion && isChunkedLast && chunked == 1;
    if (!hasAnEnd) return CallRefusal::unreadable;
    return codings > 1 ? std::optional{CallRefusal::unknownCoding} : std::nullopt;
}

bool hasGoodKey(const Head& head) {
    if (head.count(field::sec_websocket_key) != 1) return false;
    const auto key = base64Decode(std::string_view{head[field::sec_websocket_key]});
    return key && key->size() == socketKeySize;
}

} // namespace

std::optional<CallRefusal> faultOf(const Head& head) {
    if (!hasGoodHost(head) || !hasGoodTarget(head) || !hasGoodLength(head)) return CallRefusal::unreadable;
    return faultOfEncoding(head);
}

std::optional<CallRefusal> faultOfUpgrade(const Head& head) {
    if (!hasGoodKey(head) || head.count(field::sec_websocket_version) != 1) return CallRefusal::unreadable;
    if (head[field::sec_websocket_version] != socketVersion) return CallRefusal::unknownSocketVersion;
    return std::nullopt;
}

bool waitsForContinue(const Head& head) {
    return head.version() == currentVersion && beast::iequals(head[field::expect], "100-continue");
}

std::string_view localPart(std::string_view target) {
    const auto rest = behindScheme(target);
    if (!rest) return target;
    const auto path = rest->find_first_of("/?");
    return path == std::string_view::npos ? "/" : rest->substr(path);
}

} // namespace morvex::httpRules
