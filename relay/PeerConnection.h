#pragma once

#include "relay/ByteMeter.h"
#include "relay/TlsChannel.h"
#include "shared/base/FrameScreen.h"

#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/ssl/context.hpp>
#include <boost/asio/steady_timer.hpp>

#include <chrono>
#include <memory>
#include <optional>
#include <utility>

namespace morvex {

/// The socket of a device with its TLS channel, byte count and deadline. Shared by the stream and its running
/// operations. On the relay's thread.
class PeerConnection : public std::enable_shared_from_this<PeerConnection> {
  public:
    using Socket = boost::asio::ip::tcp::socket;

    /// A null context means no TLS. The context must outlive the connection.
    PeerConnection(Socket socket, boost::asio::ssl::context* context);

    [[nodiscard]] Socket& socket() { return socket_; }

    /// Null without TLS.
    [[nodiscard]] TlsChannel* tls() { return tls_ ? &*tls_ : nullptr; }

    [[nodiscard]] ByteMeter& meter() { return meter_; }

    /// From now on the peer's bytes are screened as WebSocket frames.
    void screenFrames() { screen_.emplace(FrameScreen::Start::frames); }

    /// Null before `screenFrames`.
    [[nodiscard]] FrameScreen* screen() { return screen_ ? &*screen_ : nullptr; }

    /// Closes the connection after this time, unless another one is set before.
    void expiresAfter(std::chrono::steady_clock::duration time);
    void expiresNever();
    /// Running operations fail.
    void close();

    /// Waits until the socket is ready for what TLS needs.
    template <class Token> auto ready(TlsChannel::Need need, Token&& token) {
        return socket_.async_wait(need == TlsChannel::Need::readable ? Socket::wait_read : Socket::wait_write,
                                  std::forward<Token>(token));
    }

  private:
    Socket socket_;
    ByteMeter meter_;
    std::optional<TlsChannel> tls_; ///< refers to the socket and the meter
    std::optional<FrameScreen> screen_;
    boost::asio::steady_timer deadline_;
};

} // namespace morvex
