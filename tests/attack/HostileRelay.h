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

/// A relay played by the test on a free port of 127.0.0.1, over real sockets. WebSockets wait until the test
/// takes them and speaks for the relay; other HTTP requests are answered by a script.
class HostileRelay {
  public:
    using Socket = boost::asio::ip::tcp::socket;
    using Request = boost::beast::http::request<boost::beast::http::string_body>;
    using Script = std::function<void(Socket&, const Request&)>;

    /// The relay's end of an open WebSocket. Calls block; calls on a broken one do nothing or return nothing.
    class Line {
      public:
        explicit Line(Socket socket) : stream_(std::move(socket)) {}

        bool accept(const Request& upgrade);
        void send(std::string_view text);
        void send(RelayMessage message);

        template <class Case> void say(Case content) { send(RelayMessage{std::move(content)}); }

        /// Sends bytes outside the WebSocket framing.
        bool sendRaw(std::string_view bytes);
        /// The next frame of the companion; nothing if the connection has ended.
        std::optional<RelayMessage> receive();
        /// Reads and answers pings until the connection has ended.
        void readToTheEnd();
        /// Reads bytes without answering until the connection has ended.
        void takeToTheEnd();
        /// Ends the connection, from any thread.
        void cut();

        /// Whether the system would take more bytes to send; from any thread.
        [[nodiscard]] bool isWritable();

        /// Bytes on their way to the companion, whose end is in this process.
        struct Waiting {
            int unsent = 0; ///< not yet taken by the system of its end
            int unread = 0; ///< not yet taken by itself
            bool operator==(const Waiting&) const = default;
        };

        /// From any thread.
        [[nodiscard]] Waiting waiting();

        boost::beast::websocket::stream<Socket>& stream() { return stream_; }

      private:
        boost::beast::websocket::stream<Socket> stream_;
    };

    HostileRelay();
    ~HostileRelay();
    HostileRelay(const HostileRelay&) = delete;
    HostileRelay& operator=(const HostileRelay&) = delete;

    [[nodiscard]] std::string address() const;

    /// Sets the script for requests that open no WebSocket; without one the answer is 404.
    void answerWith(Script script);
    /// Sets the script that answers requests for a WebSocket instead of opening it; an empty one opens them
    /// again.
    void refuseSocketsWith(Script script);

    /// The next WebSocket, if it comes within `patience`.
    std::unique_ptr<Line> take(std::chrono::milliseconds patience);

    /// The number of requests of both kinds.
    [[nodiscard]] int requests();
    /// Waits until there were so many requests; false if they do not come within `patience`.
    [[nodiscard]] bool waitForRequests(int count, std::chrono::milliseconds patience);

    /// The head of a server's frame: its first byte and a 64-bit length (RFC 6455, section 5.2).
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
