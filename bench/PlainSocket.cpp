#include "bench/PlainSocket.h"

#include "shared/base/Require.h"

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/ssl/context.hpp>
#include <boost/asio/ssl/stream.hpp>
#include <boost/beast/core/buffers_to_string.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/websocket/ssl.hpp>
#include <boost/beast/websocket/stream.hpp>

namespace morvex {

namespace asio = boost::asio;
namespace websocket = boost::beast::websocket;
using asio::ip::tcp;
using TlsStream = asio::ssl::stream<tcp::socket>;

namespace {

/// Shared by all sockets, since each context needs its own file descriptors.
asio::io_context& context() {
    static asio::io_context instance;
    return instance;
}

asio::ssl::context& tlsContext() {
    static asio::ssl::context instance(asio::ssl::context::tls_client);
    return instance;
}

void connect(tcp::socket& socket, std::uint16_t port, std::uint8_t from) {
    socket.open(tcp::v4());
    socket.bind({asio::ip::address_v4(asio::ip::address_v4::bytes_type{127, 0, 0, from}), 0});
    socket.connect({asio::ip::address_v4::loopback(), port});
    socket.set_option(tcp::no_delay{true});
}

} // namespace

struct PlainSocket::Connection {
    virtual ~Connection() = default;
    virtual void write(std::string_view text) = 0;
    virtual std::optional<std::string> read() = 0;
    virtual void listen() = 0;

    std::size_t pings = 0;
};

template <class Stream> struct PlainSocket::ConnectionOver : Connection {
    template <class... Arguments>
    explicit ConnectionOver(Arguments&&... arguments) : socket(std::forward<Arguments>(arguments)...) {}

    void open() {
        socket.auto_fragment(false);
        socket.text(true);
        socket.handshake("localhost", "/v1/ws?v=1.4");
        socket.control_callback([this](websocket::frame_type kind, std::string_view) {
            if (kind == websocket::frame_type::ping) ++pings;
        });
    }

    void write(std::string_view text) override {
        boost::beast::error_code broken;
        socket.write(asio::buffer(text), broken);
    }

    std::optional<std::string> read() override {
        boost::beast::flat_buffer frame;
        boost::beast::error_code closed;
        socket.read(frame, closed);
        if (closed) return std::nullopt;
        return boost::beast::buffers_to_string(frame.data());
    }

    void listen() override {
        socket.async_read(dropped, [this](boost::beast::error_code closed, std::size_t) {
            require(!closed, "the server has let a client go");
            dropped.clear();
            listen();
        });
    }

    websocket::stream<Stream, false> socket;
    boost::beast::flat_buffer dropped;
};

PlainSocket::PlainSocket(std::uint16_t port, std::uint8_t from, Security security) {
    if (security == Security::tls) {
        auto connection = std::make_unique<ConnectionOver<TlsStream>>(context(), tlsContext());
        connect(connection->socket.next_layer().next_layer(), port, from);
        connection->socket.next_layer().handshake(TlsStream::client);
        connection->open();
        connection_ = std::move(connection);
    } else {
        auto connection = std::make_unique<ConnectionOver<tcp::socket>>(context());
        connect(connection->socket.next_layer(), port, from);
        connection->open();
        connection_ = std::move(connection);
    }
}

PlainSocket::~PlainSocket() = default;

void PlainSocket::write(std::string_view text) {
    connection_->write(text);
}

std::optional<std::string> PlainSocket::read() {
    return connection_->read();
}

void PlainSocket::listen() {
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
