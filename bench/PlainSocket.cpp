#include "bench/PlainSocket.h"

#include "shared/base/Require.h"

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/beast/core/buffers_to_string.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/websocket/stream.hpp>

namespace morvex {

namespace asio = boost::asio;
using asio::ip::tcp;

namespace {

/// One for all sockets: it has descriptors of its own.
asio::io_context& context() {
    static asio::io_context instance;
    return instance;
}

} // namespace

struct PlainSocket::Connection {
    boost::beast::websocket::stream<tcp::socket, false> socket{context()};
    boost::beast::flat_buffer frame{}; ///< what came while it listens
    std::size_t pings = 0;

    void listen() {
        socket.async_read(frame, [this](boost::beast::error_code closed, std::size_t) {
            vyzaduj(!closed, "the server has let a client go");
            frame.clear();
            listen();
        });
    }
};

PlainSocket::PlainSocket(std::uint16_t port, std::uint8_t from)
    : connection_(std::make_unique<Connection>()) {
    auto& tcpSocket = connection_->socket.next_layer();
    tcpSocket.open(tcp::v4());
    tcpSocket.bind({asio::ip::address_v4(asio::ip::address_v4::bytes_type{127, 0, 0, from}), 0});
    tcpSocket.connect({asio::ip::address_v4::loopback(), port});
    tcpSocket.set_option(tcp::no_delay{true});
    connection_->socket.auto_fragment(false);
    connection_->socket.text(true);
    connection_->socket.handshake("localhost", "/v1/ws?v=1.4");
}

PlainSocket::~PlainSocket() = default;

void PlainSocket::write(std::string_view text) {
    boost::beast::error_code broken;
    connection_->socket.write(asio::buffer(text), broken);
}

std::optional<std::string> PlainSocket::read() {
    boost::beast::flat_buffer frame;
    boost::beast::error_code closed;
    connection_->socket.read(frame, closed);
    if (closed) return std::nullopt;
    return boost::beast::buffers_to_string(frame.data());
}

void PlainSocket::listen() {
    connection_->socket.control_callback([this](boost::beast::websocket::frame_type kind, std::string_view) {
        if (kind == boost::beast::websocket::frame_type::ping) ++connection_->pings;
    });
    connection_->listen();
}

void PlainSocket::idle(std::chrono::milliseconds time) {
    context().restart();
    context().run_for(time);
}

std::size_t PlainSocket::pings() const {
    return connection_->pings;
}

} // namespace morvex
