#pragma once

#include <boost/asio/any_io_executor.hpp>
#include <boost/asio/awaitable.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/ssl/context.hpp>
#include <boost/asio/ssl/stream.hpp>
#include <boost/beast/core/basic_stream.hpp>
#include <boost/beast/core/role.hpp>
#include <boost/beast/websocket/ssl.hpp>
#include <boost/beast/websocket/teardown.hpp>

#include <cstdint>
#include <memory>
#include <utility>

namespace morvex {

/// Counts what a socket takes and gives; limits nothing.
class ByteMeter {
  public:
    [[nodiscard]] std::uint64_t bytesRead() const { return bytesRead_; }

    [[nodiscard]] std::uint64_t bytesWritten() const { return bytesWritten_; }

  private:
    friend class boost::beast::rate_policy_access;
    static constexpr auto unlimited = static_cast<std::size_t>(-1);

    // The names that Beast calls.
    static std::size_t available_read_bytes() { return unlimited; }

    static std::size_t available_write_bytes() { return unlimited; }

    void transfer_read_bytes(std::size_t count) { bytesRead_ += count; }

    void transfer_write_bytes(std::size_t count) { bytesWritten_ += count; }

    static void on_timer() {}

    std::uint64_t bytesRead_ = 0;
    std::uint64_t bytesWritten_ = 0;
};

/// A connection to a device, with TLS or without, in one type, so that the sessions above are compiled once.
/// The lower-case names are those that Asio and Beast ask of a stream.
class PeerStream {
  public:
    using Tcp = boost::beast::basic_stream<boost::asio::ip::tcp, boost::asio::any_io_executor, ByteMeter>;
    using Tls = boost::asio::ssl::stream<Tcp&>;
    using executor_type = Tcp::executor_type;

    /// Without a context there is no TLS. The context outlives the stream.
    PeerStream(boost::asio::ip::tcp::socket socket, boost::asio::ssl::context* context)
        : tcp_(std::make_unique<Tcp>(std::move(socket))),
          tls_(context ? std::make_unique<Tls>(*tcp_, *context) : nullptr) {}

    /// Comes first. False when it failed; at once true without TLS.
    boost::asio::awaitable<bool> handshake();

    [[nodiscard]] Tcp& tcp() { return *tcp_; }

    executor_type get_executor() { return tcp_->get_executor(); }

    template <class Buffers, class Token> auto async_read_some(const Buffers& buffers, Token&& token) {
        return boost::asio::async_initiate<Token, void(boost::beast::error_code, std::size_t)>(
            [this](auto handler, const Buffers& given) {
                if (tls_)
                    tls_->async_read_some(given, std::move(handler));
                else
                    tcp_->async_read_some(given, std::move(handler));
            },
            token, buffers);
    }

    template <class Buffers, class Token> auto async_write_some(const Buffers& buffers, Token&& token) {
        return boost::asio::async_initiate<Token, void(boost::beast::error_code, std::size_t)>(
            [this](auto handler, const Buffers& given) {
                if (tls_)
                    tls_->async_write_some(given, std::move(handler));
                else
                    tcp_->async_write_some(given, std::move(handler));
            },
            token, buffers);
    }

    /// The end of a WebSocket whose closing handshake is done.
    template <class Handler>
    friend void async_teardown(boost::beast::role_type role, PeerStream& stream, Handler&& handler) {
        using boost::beast::async_teardown;
        if (stream.tls_)
            async_teardown(role, *stream.tls_, std::forward<Handler>(handler));
        else
            async_teardown(role, *stream.tcp_, std::forward<Handler>(handler));
    }

    friend void beast_close_socket(PeerStream& stream) { stream.tcp_->close(); }

  private:
    std::unique_ptr<Tcp> tcp_;
    std::unique_ptr<Tls> tls_;
};

} // namespace morvex
