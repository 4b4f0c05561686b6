#include "platform/net/Dialing.h"

#include "platform/net/NetworkTrouble.h"
#include "platform/net/TlsContext.h"

#include <boost/asio/ssl/stream_base.hpp>

namespace morvex {

namespace asio = boost::asio;
using boost::system::error_code;

asio::awaitable<error_code> connectTo(asio::ip::tcp::resolver::results_type addresses,
                                      boost::beast::tcp_stream& stream) {
    auto [notConnected, address] = co_await stream.async_connect(addresses, asTuple);
    if (notConnected) co_return notConnected;
    error_code refused;
    co_return stream.socket().set_option(asio::ip::tcp::no_delay(true), refused);
}

asio::awaitable<error_code> shakeHands(boost::beast::ssl_stream<boost::beast::tcp_stream>& stream,
                                       std::string host) {
    if (!expectHost(stream.native_handle(), host)) co_return asio::error::no_memory;
    auto [error] = co_await stream.async_handshake(asio::ssl::stream_base::client, asTuple);
    co_return error;
}

Sentence wordsFor(std::string_view where, const error_code& error, SSL* tls) {
    if (tls)
        if (const auto verdict = certificateVerdict(tls); verdict != X509_V_OK)
            return networkError(where, certificateTrouble(verdict), X509_verify_cert_error_string(verdict))
                .popis();
    return networkError(where, troubleOf(error), error.message()).popis();
}

} // namespace morvex
