#pragma once

#include "relay/PairCalls.h"
#include "shared/base/Date.h"

#include <boost/beast/http/message.hpp>
#include <boost/beast/http/string_body.hpp>

#include <string>

namespace morvex {

/// A time as HTTP writes it: "Sun, 06 Nov 1994 08:49:37 GMT" (RFC 9110, section 5.6.7).
std::string httpDate(Date time);

/// The answer to a request, as it travels. No other request follows on its connection.
boost::beast::http::response<boost::beast::http::string_body> httpReply(CallReply reply, Date now);

} // namespace morvex
