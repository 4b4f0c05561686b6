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

/// A socket of a device with what belongs to it: TLS or none, the count of its bytes, and the time by which
/// it ends. Shared by the stream and the operations under way. On the relay's thread.
class PeerConnection : public std::enable_shared_from_this<PeerConnection> {
  public:
    using Socket = boost::asio::ip::tcp::socket;

    /// Without a context there is no TLS. The context outlives the connection.
    PeerConnection(Socket socket, boost::asio::ssl::context* context);

    [[nodiscard]] Socket& socket() { return socket_; }

    /// Null without TLS.
    [[nodiscard]] TlsChannel* tls() { return tls_ ? &*tls_ : nullptr; }

    [[nodiscard]] ByteMeter& meter() { return meter_; }

    /// From now on the peer sends frames of a WebSocket.
    void screenFrames() { screen_.emplace(FrameScreen::Start::frames); }

    /// Null before.
    [[nodiscard]] FrameScreen* screen() { return screen_ ? &*screen_ : nullptr; }

    /// Closes the connection after this time, unless another one is set before.
    void expiresAfter(std::chrono::steady_clock::duration time);
    void expiresNever();
    /// What is under way fails.
    void close();

    /// Until the socket is ready for what TLS needs.
    template <class Token> auto ready(TlsChannel::Need need, Token&& token) {
        return socket_.async_wait(need == TlsChannel::Need::readable ? Socket::wait_read : Socket::wait_write,
                                  std::forward<Token>(token));
    }

  private:
    Socket socket_;
    ByteMeter meter_;
    std::optional<TlsChannel> tls_; ///< refers to the two above
    std::optional<FrameScreen> screen_;
    boost::asio::steady_timer deadline_;
};

} // namespace morvex
