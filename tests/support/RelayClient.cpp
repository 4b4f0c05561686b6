#include "tests/support/RelayClient.h"

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/read.hpp>
#include <boost/asio/ssl.hpp>
#include <boost/asio/write.hpp>
#include <boost/beast/core.hpp>
#include <boost/beast/http.hpp>
#include <boost/beast/websocket.hpp>
#include <boost/beast/websocket/ssl.hpp>
#include <gtest/gtest.h>

namespace morvex {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = boost::beast::http;
using asio::ip::tcp;

namespace {

asio::io_context& context() {
    static asio::io_context instance;
    return instance;
}

/// Trusts anybody: the tests' certificates are made a moment before.
asio::ssl::context& tlsContext() {
    static asio::ssl::context instance{asio::ssl::context::tls_client};
    return instance;
}

tcp::endpoint endpoint(std::uint16_t port) {
    return {asio::ip::address_v4::loopback(), port};
}

void connect(tcp::socket& socket, std::uint16_t port, const std::string& from) {
    socket.open(tcp::v4());
    socket.bind({asio::ip::make_address(from), 0});
    socket.connect(endpoint(port));
}

template <class Stream> HttpAnswer ask(Stream& stream, std::string_view path, std::string_view body) {
    http::request<http::string_body> request{http::verb::post, path, 11};
    request.set(http::field::host, "localhost");
    request.set(http::field::content_type, "application/json");
    request.body() = body;
    request.prepare_payload();
    beast::error_code error;
    http::write(stream, request, error);
    beast::flat_buffer buffer;
    http::response<http::string_body> response;
    http::read(stream, buffer, response, error);
    if (error) return {};
    return {response.result_int(), response.body()};
}

} // namespace

HttpAnswer post(std::uint16_t port, std::string_view path, std::string_view body, bool usesTls,
                const std::string& from) {
    if (!usesTls) {
        tcp::socket socket{context()};
        connect(socket, port, from);
        return ask(socket, path, body);
    }
    asio::ssl::stream<tcp::socket> stream{context(), tlsContext()};
    connect(stream.next_layer(), port, from);
    stream.handshake(asio::ssl::stream_base::client);
    return ask(stream, path, body);
}

std::string exchange(std::uint16_t port, std::string_view bytes) {
    tcp::socket socket{context()};
    socket.connect(endpoint(port));
    beast::error_code error;
    asio::write(socket, asio::buffer(bytes), error);
    std::string answer;
    asio::read(socket, asio::dynamic_buffer(answer), error);
    return answer;
}

struct RawSocket::Connection {
    tcp::socket socket{context()};
};

RawSocket::RawSocket(std::uint16_t port) : connection_(std::make_unique<Connection>()) {
    connection_->socket.connect(endpoint(port));
    connection_->socket.set_option(tcp::no_delay{true});
}

RawSocket::~RawSocket() = default;

void RawSocket::write(std::string_view bytes) {
    beast::error_code error;
    asio::write(connection_->socket, asio::buffer(bytes), error);
}

std::string RawSocket::readHead() {
    std::string head;
    beast::error_code error;
    for (char byte = 0; !error && !head.ends_with("\r\n\r\n"); head += byte)
        asio::read(connection_->socket, asio::buffer(&byte, 1), error);
    return head;
}

std::string RawSocket::readToTheEnd() {
    std::string bytes;
    beast::error_code error;
    asio::read(connection_->socket, asio::dynamic_buffer(bytes), error);
    return bytes;
}

TestPair pairAt(std::uint16_t port, bool usesTls) {
    TestPair pair;
    const auto created = post(port, "/v1/pair/create", TestPair::create(pair.mac), usesTls);
    EXPECT_EQ(created.status, 200U) << created.body;
    const auto founding = decode<ZalozitOdpoved>(created.body).value();
    pair.id = founding.pairID;
    const auto joined =
        post(port, "/v1/pair/join", TestPair::join(pair.phone, founding.pairingToken), usesTls);
    EXPECT_EQ(joined.status, 200U) << joined.body;
    return pair;
}

PairStore storeOf(const std::vector<TestPair>& pairs, Date tokenEnd) {
    auto store = PairStore::open(":memory:").value();
    for (const auto& pair : pairs) {
        const Member mac{pair.mac.deviceID(), pair.mac.signingKey(), DeviceRole::mac};
        const Member phone{pair.phone.deviceID(), pair.phone.signingKey(), DeviceRole::phone};
        EXPECT_TRUE(store.create(pair.id, mac, sha256(asBytes(pair.id.rawValue)), tokenEnd));
        EXPECT_TRUE(store.join(pair.id, phone).value());
    }
    return store;
}

struct DeviceSocket::Connection {
    virtual ~Connection() = default;
    virtual beast::error_code write(std::string_view frame) = 0;
    virtual std::optional<std::string> read() = 0;
    [[nodiscard]] virtual std::uint16_t closeCode() const = 0;
    virtual void resetOnEnd() = 0;
    std::size_t pings = 0;
};

template <class Stream> struct DeviceSocket::Over final : Connection {
    template <class... Argument>
    Over(std::uint16_t port, std::string_view target, const std::string& from, Argument&... argument)
        : socket(argument...) {
        connect(beast::get_lowest_layer(socket), port, from);
        if constexpr (!std::same_as<Stream, tcp::socket>)
            socket.next_layer().handshake(asio::ssl::stream_base::client);
        socket.read_message_max(0);
        socket.auto_fragment(false);
        socket.control_callback([this](beast::websocket::frame_type type, beast::string_view) {
            if (type == beast::websocket::frame_type::ping) ++pings;
        });
        socket.handshake("localhost", beast::string_view{target.data(), target.size()});
    }

    beast::error_code write(std::string_view frame) override {
        beast::error_code error;
        socket.write(asio::buffer(frame), error);
        return error;
    }

    std::optional<std::string> read() override {
        beast::flat_buffer buffer;
        beast::error_code error;
        socket.read(buffer, error);
        if (error) return std::nullopt;
        return beast::buffers_to_string(buffer.data());
    }

    [[nodiscard]] std::uint16_t closeCode() const override {
        return socket.reason() ? static_cast<std::uint16_t>(socket.reason().code) : 1006;
    }

    void resetOnEnd() override {
        beast::get_lowest_layer(socket).set_option(asio::socket_base::linger(true, 0));
    }

    beast::websocket::stream<Stream> socket;
};

DeviceSocket::DeviceSocket(std::uint16_t port, bool usesTls, std::string_view target,
                           const std::string& from) {
    if (usesTls)
        connection_ = std::make_unique<Over<asio::ssl::stream<tcp::socket>>>(port, target, from, context(),
                                                                             tlsContext());
    else
        connection_ = std::make_unique<Over<tcp::socket>>(port, target, from, context());
}

DeviceSocket::~DeviceSocket() = default;

void DeviceSocket::write(std::string_view frame) {
    EXPECT_TRUE(tryToWrite(frame));
}

bool DeviceSocket::tryToWrite(std::string_view frame) {
    return !connection_->write(frame);
}

std::optional<std::string> DeviceSocket::read() {
    return connection_->read();
}

std::uint16_t DeviceSocket::closeCode() const {
    return connection_->closeCode();
}

std::size_t DeviceSocket::pings() const {
    return connection_->pings;
}

void DeviceSocket::resetOnEnd() {
    connection_->resetOnEnd();
}

void DeviceSocket::authenticate(const TestPair& pair, const DeviceIdentity& device) {
    const auto message = decode<RelayMessage>(read().value()).value();
    const auto* challenge = message.as<RelayMessage::Challenge>();
    ASSERT_TRUE(challenge);
    EXPECT_EQ(challenge->nonce.size(), 32U);
    write(pair.authenticate(device, challenge->nonce));
}

void DeviceSocket::logIn(const TestPair& pair, const DeviceIdentity& device, bool peerOnline) {
    authenticate(pair, device);
    EXPECT_EQ(read(), encode(RelayMessage{RelayMessage::Authenticated{peerOnline}}));
}

} // namespace morvex
