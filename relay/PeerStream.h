#pragma once

#include "relay/PeerConnection.h"
#include "relay/PeerTransfer.h"

#include <boost/asio/awaitable.hpp>
#include <boost/asio/compose.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/ssl/context.hpp>
#include <boost/beast/core/role.hpp>

#include <memory>
#include <utility>

namespace morvex {

/// A connection to a device, with TLS or without, in one type, so that the sessions above are compiled once.
/// The lower-case names are those that Asio and Beast ask of a stream.
class PeerStream {
  public:
    using Socket = PeerConnection::Socket;
    using executor_type = Socket::executor_type;

    /// A null context means no TLS. The context must outlive the stream.
    PeerStream(Socket socket, boost::asio::ssl::context* context)
        : connection_(std::make_shared<PeerConnection>(std::move(socket), context)) {}

    /// Running operations fail.
    ~PeerStream() {
        if (connection_) connection_->close();
    }

    PeerStream(PeerStream&&) = default;
    PeerStream& operator=(PeerStream&&) = delete;

    /// Must be the first call. Returns false when it failed, and true at once without TLS.
    boost::asio::awaitable<bool> handshake();
    /// Tells the peer that nothing more will be sent.
    boost::asio::awaitable<void> sayEnd();

    [[nodiscard]] PeerConnection& connection() { return *connection_; }

    executor_type get_executor() { return connection_->socket().get_executor(); }

    template <class Buffers, class Token> auto async_read_some(const Buffers& buffers, Token&& token) {
        return transfer(Reading<Buffers>{buffers}, token);
    }

    template <class Buffers, class Token> auto async_write_some(const Buffers& buffers, Token&& token) {
        return transfer(Writing<Buffers>{buffers}, token);
    }

    /// Ends the stream of a WebSocket after the closing handshake.
    template <class Handler>
    friend void async_teardown(boost::beast::role_type role, PeerStream& stream, Handler&& handler) {
        boost::asio::async_compose<Handler, void(boost::system::error_code)>(
            PeerFarewell{stream.connection_, role}, handler, stream.connection_->socket());
    }

    friend void beast_close_socket(PeerStream& stream) { stream.connection_->close(); }

  private:
    template <class Direction, class Token> auto transfer(Direction direction, Token& token) {
        return boost::asio::async_compose<Token, void(boost::system::error_code, std::size_t)>(
            PeerTransfer<Direction>{connection_, std::move(direction)}, token, connection_->socket());
    }

    std::shared_ptr<PeerConnection> connection_;
};

} // namespace morvex
