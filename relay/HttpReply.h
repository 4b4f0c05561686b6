#pragma once

#include "relay/PairCalls.h"
#include "shared/base/Date.h"

#include <boost/beast/http/message.hpp>
#include <boost/beast/http/string_body.hpp>

#include <string>

namespace morvex {

/// A time in the format of HTTP: "Sun, 06 Nov 1994 08:49:37 GMT" (RFC 9110, section 5.6.7).
std::string httpDate(Date time);

/// The response for a reply. It closes the connection, so no other request follows.
boost::beast::http::response<boost::beast::http::string_body> httpReply(CallReply reply, Date now);

} // namespace morvex
