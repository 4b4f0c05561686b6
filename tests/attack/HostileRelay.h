#pragma once

#include "shared/wire/RelayMessage.h"

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http/message.hpp>
#include <boost/beast/http/string_body.hpp>
#include <boost/beast/websocket/stream.hpp>

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <thread>

namespace morvex {

/// A relay of the test on a free port of 127.0.0.1, over real sockets. WebSockets wait until the test takes
/// them and speaks for the relay; what else is asked over HTTP, a script answers.
class HostileRelay {
  public:
    using Socket = boost::asio::ip::tcp::socket;
    using Request = boost::beast::http::request<boost::beast::http::string_body>;
    using Script = std::function<void(Socket&, const Request&)>;

    /// The relay's end of one open WebSocket. Calls block; a call on a broken one does nothing or gives
    /// nothing.
    class Line {
      public:
        explicit Line(Socket socket) : stream_(std::move(socket)) {}

        bool accept(const Request& upgrade);
        void send(std::string_view text);
        void send(RelayMessage message);

        template <class Case> void say(Case content) { send(RelayMessage{std::move(content)}); }

        /// Bytes below the frames.
        bool sendRaw(std::string_view bytes);
        /// The next frame of the companion; nothing once the connection has ended.
        std::optional<RelayMessage> receive();
        /// Reads, and answers pings, until the connection has ended.
        void readToTheEnd();
        /// Reads bytes, and answers nothing, until the connection has ended.
        void takeToTheEnd();
        /// Ends the connection, from any thread.
        void cut();

        boost::beast::websocket::stream<Socket>& stream() { return stream_; }

      private:
        boost::beast::websocket::stream<Socket> stream_;
    };

    HostileRelay();
    ~HostileRelay();
    HostileRelay(const HostileRelay&) = delete;
    HostileRelay& operator=(const HostileRelay&) = delete;

    [[nodiscard]] std::string address() const;

    /// What answers the requests that open no WebSocket; 404 without it.
    void answerWith(Script script);
    /// What answers the requests for a WebSocket instead of opening it; empty to open them again.
    void refuseSocketsWith(Script script);

    /// The next WebSocket, if one comes within this time.
    std::unique_ptr<Line> take(std::chrono::milliseconds patience);

    /// How many requests of both kinds came.
    [[nodiscard]] int requests();

    /// The head of a frame of a server: its first byte, and a length of 64 bits (RFC 6455, section 5.2).
    static std::string frameHead(unsigned char first, std::uint64_t length);

    /// An HTTP reply that ends its connection.
    static void reply(Socket& socket, int status, std::string_view body, std::string_view headers = {});

  private:
    void serve();
    void play(Socket socket);

    boost::asio::io_context context_;
    boost::asio::ip::tcp::acceptor acceptor_;
    const std::uint16_t port_;
    std::mutex mutex_;
    std::condition_variable arrived_;
    std::deque<std::unique_ptr<Line>> lines_;
    Script script_;
    Script refusal_;
    int requests_ = 0;
    int played_ = -1;
    bool ended_ = false;
    std::thread thread_;
};

} // namespace morvex
