#pragma once

#include "shared/base/Sentence.h"

#include <boost/asio/as_tuple.hpp>
#include <boost/asio/awaitable.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/use_awaitable.hpp>
#include <boost/beast/core/tcp_stream.hpp>
#include <boost/beast/ssl/ssl_stream.hpp>

#include <string>
#include <string_view>

namespace morvex {

/// Makes an operation return its error code as a value.
inline constexpr auto asTuple = boost::asio::as_tuple(boost::asio::use_awaitable);

/// A look-up that has begun on its thread is not ended by `cancel` of the resolver and may still find the
/// host minutes later: look then whether the connection is still wanted.
inline auto findHost(boost::asio::ip::tcp::resolver& resolver, const std::string& host,
                     const std::string& port) {
    return resolver.async_resolve(host, port, asTuple);
}

/// Connects to the first of the addresses that answers.
boost::asio::awaitable<boost::system::error_code>
connectTo(boost::asio::ip::tcp::resolver::results_type addresses, boost::beast::tcp_stream& stream);

/// The client's side of the TLS handshake; the server must have a certificate for `host`.
boost::asio::awaitable<boost::system::error_code>
shakeHands(boost::beast::ssl_stream<boost::beast::tcp_stream>& stream, std::string host);

/// The user's words for a failed step; the library's own words go to the log with the prefix `where`. `tls`
/// is null for a connection without TLS.
Sentence wordsFor(std::string_view where, const boost::system::error_code& error, SSL* tls);

} // namespace morvex
