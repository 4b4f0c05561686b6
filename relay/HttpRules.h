#pragma once

#include "relay/PairCalls.h"

#include <boost/beast/http/fields.hpp>
#include <boost/beast/http/message.hpp>

#include <optional>
#include <string_view>

namespace morvex {

/// What HTTP/1.1 (RFC 9110, RFC 9112) and the opening of a WebSocket (RFC 6455, section 4.2) demand of a
/// request and the library's parser does not look at.
namespace httpRules {

using Head = boost::beast::http::request_header<>;

/// Why a request is refused before its content is read; nothing for a sound one.
std::optional<CallRefusal> faultOf(const Head& head);
/// The same for one that asks for a WebSocket and has passed the rules above.
std::optional<CallRefusal> faultOfUpgrade(const Head& head);
/// Whether the client waits for a word before it sends the content (RFC 9110, section 10.1.1).
bool waitsForContinue(const Head& head);

/// The path and the query of a target of either form: `/v1/ws?v=1.4` or `http://relay/v1/ws?v=1.4`.
std::string_view localPart(std::string_view target);

} // namespace httpRules

} // namespace morvex
