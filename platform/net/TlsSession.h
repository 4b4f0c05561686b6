#pragma once

#include "platform/net/NetworkConnection.h"

#include <boost/asio/awaitable.hpp>
#include <boost/asio/ssl/context.hpp>
#include <boost/beast/core/tcp_stream.hpp>
#include <boost/beast/ssl/ssl_stream.hpp>

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace morvex {

/// One TLS connection over TCP. Everything here happens on the network thread.
class TlsSession final : public NetworkConnection, public std::enable_shared_from_this<TlsSession> {
  public:
    TlsSession(NetworkThread& network, boost::asio::ssl::context& tls, std::string host, std::uint16_t port);

    /// Must be the first call; call it once.
    void open(Opened opened);

    void send(std::string bytes, Reply<void> reply);
    void receive(Reply<std::string> reply);

    /// Ends the session. Sends the closing alert only when no operation is in progress.
    void close();
    void abandon() override;

    /// The last handle was destroyed. A farewell in progress is still finished.
    void release();

  private:
    boost::asio::awaitable<void> connect();
    void opened();
    void arrived(boost::system::error_code error, std::size_t size);

    /// True when the step failed, or when the connection was ended in the meantime.
    bool failed(boost::system::error_code error);
    void fall(Sentence words);
    void failWaiting();

    boost::beast::tcp_stream& tcp() override { return stream_.next_layer(); }

    std::string host_;
    std::string port_;
    boost::beast::ssl_stream<boost::beast::tcp_stream> stream_;

    Opened opened_; ///< empty after it was called
    std::optional<NetworkError> failure_;
    bool hasEnded_ = false; ///< the peer sends nothing more
    bool farewell_ = false; ///< the closing alert is on its way or was sent

    std::string outgoing_;
    bool writing_ = false;
    std::optional<Reply<void>> sender_;

    std::array<char, std::size_t{16} * 1024> incoming_{};
    bool reading_ = false;
    std::optional<Reply<std::string>> receiver_;
};

} // namespace morvex
