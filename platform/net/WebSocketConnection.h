#pragma once

#include "platform/net/NetworkConnection.h"
#include "platform/net/ReadingMeter.h"
#include "platform/net/Transport.h"
#include "platform/net/WebSocketUrl.h"
#include "platform/ports/WebSocketClient.h"

#include <boost/asio/awaitable.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/websocket/stream.hpp>

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>

namespace morvex {

/// One WebSocket. Use only on the network thread, which keeps the connection until it has ended and `release`
/// was called, so that data that arrived before a failure can still be received.
class WebSocketConnection final : public NetworkConnection,
                                  public std::enable_shared_from_this<WebSocketConnection> {
  public:
    /// The headers must already be checked.
    WebSocketConnection(NetworkThread& network, boost::asio::ssl::context* tls, WebSocketUrl url,
                        WebSocketRequest request);

    /// Must be the first call; call it once.
    void open(Opened opened);

    void send(std::string text, Reply<void> reply);
    void receive(Reply<WebSocketFrame> reply);
    void ping(Reply<void> reply);

    /// The state of reading, for any thread; the meter outlives the connection.
    [[nodiscard]] std::shared_ptr<const ReadingMeter> meter() const { return meter_; }

    /// Requested with the first failure.
    [[nodiscard]] std::stop_token ended() const { return ended_.get_token(); }

    void close(CloseCode code);

    void abandon() override { close(CloseCode::abnormal); }

    /// The last handle was destroyed. A farewell in progress is still finished.
    void release();

  private:
    struct Outgoing {
        std::string text;
        Reply<void> reply;
    };

    struct Ping {
        std::uint64_t number = 0;
        Reply<void> reply;
    };

    boost::asio::awaitable<void> connect();
    boost::asio::awaitable<void> upgrade();
    void opened();

    void readOn();
    void arrived(boost::system::error_code error);
    void passOver();
    void deliver(WebSocketFrame frame);
    void noticePong(std::string_view payload);
    void answerPings(std::ptrdiff_t count);
    void writeNext();
    void writePing();

    /// True when the step failed, or when the connection was ended in the meantime.
    bool failed(boost::system::error_code error);
    [[nodiscard]] Sentence wordsOf(boost::system::error_code error);

    /// Callers see the first failure; all waiting calls fail with it.
    void fall(Sentence words);
    void endWith(Sentence words);
    void failWaiting();
    void sayGoodbye(CloseCode code);
    void reset();

    boost::beast::tcp_stream& tcp() override { return boost::beast::get_lowest_layer(stream_); }

    WebSocketUrl url_;
    WebSocketRequest request_;
    boost::beast::websocket::stream<Transport, false> stream_;

    Opened opened_; ///< empty once it was called
    std::optional<NetworkError> failure_;
    std::stop_source ended_; ///< requested at the first failure

    boost::beast::flat_buffer incoming_;
    bool reading_ = false;
    bool isPassedOver_ = false; ///< the message being read is too long and skipped
    std::deque<WebSocketFrame> arrived_;
    std::size_t arrivedBytes_ = 0;
    std::shared_ptr<ReadingMeter> meter_ = std::make_shared<ReadingMeter>();
    std::optional<Reply<WebSocketFrame>> receiver_;

    std::deque<Outgoing> outgoing_; ///< the first one is being written
    std::size_t outgoingBytes_ = 0;
    std::deque<Ping> pings_;
    std::uint64_t lastPing_ = 0;
    std::uint64_t sentPing_ = 0;
    bool pinging_ = false;
};

} // namespace morvex
