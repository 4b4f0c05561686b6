#pragma once

#include "platform/net/ScreenedRead.h"

#include <boost/asio/compose.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/beast/core/tcp_stream.hpp>
#include <boost/beast/ssl/ssl_stream.hpp>
#include <boost/beast/websocket/ssl.hpp>
#include <boost/beast/websocket/teardown.hpp>

#include <cstddef>
#include <utility>
#include <variant>

namespace morvex {

/// The bytes below a WebSocket, over TCP with or without TLS: one type for both, so that everything above is
/// written, and compiled, once. The peer's frames are looked at before they are read. Models the stream
/// concepts of Asio and Beast.
class Transport {
  public:
    using Tcp = boost::beast::tcp_stream;
    using Tls = boost::beast::ssl_stream<Tcp>;
    using next_layer_type = Tcp;
    using executor_type = Tcp::executor_type;

    /// Uses TLS if `tls` is not null; the context must outlive this object.
    Transport(boost::asio::io_context& network, boost::asio::ssl::context* tls)
        : stream_(tls ? Stream(std::in_place_type<Tls>, Tcp(network), *tls)
                      : Stream(std::in_place_type<Tcp>, network)) {}

    [[nodiscard]] Tls* tls() { return std::get_if<Tls>(&stream_); }

    Tcp& next_layer() { return tls() ? tls()->next_layer() : std::get<Tcp>(stream_); }

    executor_type get_executor() { return next_layer().get_executor(); }

    template <class Buffers, class Token> auto async_read_some(const Buffers& buffers, Token&& token) {
        return tls() ? screenedRead(*tls(), buffers, token) : screenedRead(next_layer(), buffers, token);
    }

    template <class Buffers, class Token> auto async_write_some(const Buffers& buffers, Token&& token) {
        return tls() ? tls()->async_write_some(buffers, std::forward<Token>(token))
                     : next_layer().async_write_some(buffers, std::forward<Token>(token));
    }

  private:
    template <class Source, class Buffers, class Token>
    auto screenedRead(Source& source, const Buffers& buffers, Token& token) {
        return boost::asio::async_compose<Token, void(boost::system::error_code, std::size_t)>(
            ScreenedRead<Source, Buffers>(source, screen_, buffers), token, source);
    }

    using Stream = std::variant<Tcp, Tls>;

    Stream stream_;
    FrameScreen screen_{FrameScreen::Start::answer};
};

/// Called by Beast to end the stream after the closing handshake.
template <class Handler>
void async_teardown(boost::beast::role_type role, Transport& transport, Handler&& handler) {
    using boost::beast::websocket::async_teardown;
    if (auto* tls = transport.tls())
        async_teardown(role, *tls, std::forward<Handler>(handler));
    else
        async_teardown(role, transport.next_layer(), std::forward<Handler>(handler));
}

} // namespace morvex
