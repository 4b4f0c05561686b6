#pragma once

#include "relay/PairCalls.h"

#include <boost/beast/http/fields.hpp>
#include <boost/beast/http/message.hpp>

#include <optional>
#include <string_view>

namespace morvex {

/// The rules of HTTP/1.1 (RFC 9110, RFC 9112) and of the opening of a WebSocket (RFC 6455, section 4.2) for
/// requests that the library's parser does not check.
namespace httpRules {

using Head = boost::beast::http::request_header<>;

/// Why a request is refused before its content is read; nothing for a valid one.
std::optional<CallRefusal> faultOf(const Head& head);
/// The same for a request for a WebSocket that has passed `faultOf`.
std::optional<CallRefusal> faultOfUpgrade(const Head& head);
/// Whether the client waits for "100 Continue" before it sends the content (RFC 9110, section 10.1.1).
bool waitsForContinue(const Head& head);

/// The path and the query of a target of either form: `/v1/ws?v=1.4` or `http://relay/v1/ws?v=1.4`.
std::string_view localPart(std::string_view target);

} // namespace httpRules

} // namespace morvex
