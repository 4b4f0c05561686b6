#pragma once

#include <boost/beast/websocket/rfc6455.hpp>

namespace morvex {

/// Whether a server that accepted a WebSocket agreed to exactly what was asked for: no extension, no
/// subprotocol, and a single protocol to change to (RFC 6455, section 4.1). The library checks status,
/// `Connection` and the proof of the key.
bool isWhatWasAskedFor(const boost::beast::websocket::response_type& answer);

} // namespace morvex
