#pragma once

#include <boost/beast/websocket/rfc6455.hpp>

namespace morvex {

/// Whether a server that has agreed to a WebSocket agreed to what was asked for and to nothing else: no
/// extension, no subprotocol, and one protocol to change to (RFC 6455, section 4.1). The library judges
/// status, `Connection` and the proof of the key.
bool isWhatWasAskedFor(const boost::beast::websocket::response_type& answer);

} // namespace morvex
