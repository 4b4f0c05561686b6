#include "tests/attack/TlsFaults.h"

#include <boost/asio/buffer.hpp>
#include <boost/asio/ssl/context.hpp>
#include <boost/asio/ssl/stream.hpp>
#include <boost/asio/write.hpp>

#include <array>
#include <chrono>
#include <string>
#include <utility>

namespace morvex {

namespace {

using namespace std::chrono_literals;
using Socket = TestServer::Socket;
namespace ssl = boost::asio::ssl;

/// A TLS server with this certificate. Everything that it is told is a leak.
TestServer::Script holding(std::atomic<std::size_t>& told, TestAuthority::Identity identity,
                           ssl::context::method method = ssl::context::tls_server) {
    return [&told, identity = std::move(identity), method](Socket& socket) {
        ssl::context context(method);
        if (method != ssl::context::tls_server) SSL_CTX_set_security_level(context.native_handle(), 0);
        context.use_certificate_chain(boost::asio::buffer(identity.certificate));
        context.use_private_key(boost::asio::buffer(identity.key), ssl::context::pem);
        ssl::stream<Socket&> stream(socket, context);
        boost::system::error_code error;
        stream.handshake(ssl::stream_base::server, error);
        std::array<char, 1> byte{};
        if (!error) told += stream.read_some(boost::asio::buffer(byte), error);
    };
}

/// Answers the first byte of a handshake with `bytes`.
TestServer::Script saying(std::string bytes) {
    return [bytes = std::move(bytes)](Socket& socket) {
        std::array<char, 1> byte{};
        boost::system::error_code error;
        socket.read_some(boost::asio::buffer(byte), error);
        boost::asio::write(socket, boost::asio::buffer(bytes), error);
        while (!error) socket.read_some(boost::asio::buffer(byte), error);
    };
}

} // namespace

std::vector<TlsFault> tlsFaults(TestAuthority& authority, std::atomic<std::size_t>& told) {
    return {
        {"an unknown authority", holding(told, TestAuthority().issue("IP:127.0.0.1"))},
        {"nobody's signature", holding(told, TestAuthority::issueToItself("IP:127.0.0.1"))},
        {"a certificate of yesterday", holding(told, authority.issue("IP:127.0.0.1", {-48h, -1h}))},
        {"a certificate of tomorrow", holding(told, authority.issue("IP:127.0.0.1", {1h, 48h}))},
        {"another address", holding(told, authority.issue("IP:127.0.0.2"))},
        {"a name", holding(told, authority.issue("DNS:localhost,DNS:other.example"))},
        {"TLS 1.1", holding(told, authority.issue("IP:127.0.0.1"), ssl::context::tlsv11_server)},
        {"HTTP", saying("HTTP/1.1 200 OK\r\nContent-Length: 2\r\n\r\n{}")},
        {"an alert", saying(std::string("\x15\x03\x03\x00\x02\x02\x28", 7))},
        {"a record too long", saying(std::string("\x16\x03\x03\xff\xff", 5) + std::string(70'000, 'x'))},
    };
}

} // namespace morvex
