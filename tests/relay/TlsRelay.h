#pragma once

#include "tests/relay/RunningRelay.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TestAuthority.h"

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/read.hpp>
#include <boost/asio/ssl/context.hpp>
#include <boost/asio/ssl/stream.hpp>
#include <boost/asio/write.hpp>
#include <openssl/ssl.h>

#include <fstream>
#include <functional>
#include <string>
#include <string_view>

namespace morvex {

/// A relay that speaks TLS with a certificate of its own making.
class TlsRelay {
  public:
    explicit TlsRelay(const RelayLimits& limits = RunningRelay::quickLimits(),
                      TestAuthority::KeyKind kind = TestAuthority::KeyKind::ellipticCurve)
        : relay_(limits, RunningRelay::memoryStore(), issue(kind)) {}

    [[nodiscard]] std::uint16_t port() const { return relay_.port(); }

  private:
    RelayOptions issue(TestAuthority::KeyKind kind) {
        const auto identity = TestAuthority::issueToItself("DNS:localhost", kind);
        RelayOptions options;
        options.tls = {folder_.path() / "certificate.pem", folder_.path() / "key.pem"};
        std::ofstream(options.tls->certificate) << identity.certificate;
        std::ofstream(options.tls->key) << identity.key;
        return options;
    }

    TemporaryFolder folder_;
    RunningRelay relay_;
};

/// A client of TLS that speaks whatever it is told to and trusts anybody. Every call waits.
class TlsClient {
  public:
    using Settings = std::function<void(SSL_CTX*)>;

    explicit TlsClient(
        std::uint16_t port, const Settings& settings = [](SSL_CTX*) {})
        : tls_(with(settings)) {
        stream_.next_layer().connect({boost::asio::ip::address_v4::loopback(), port});
        stream_.next_layer().set_option(boost::asio::ip::tcp::no_delay{true});
    }

    bool handshake() {
        boost::system::error_code error;
        stream_.handshake(boost::asio::ssl::stream_base::client, error);
        return !error;
    }

    bool write(std::string_view bytes) {
        boost::system::error_code error;
        boost::asio::write(stream_, boost::asio::buffer(bytes), error);
        return !error;
    }

    /// All until the relay ends.
    std::string read() {
        std::string bytes;
        boost::asio::read(stream_, boost::asio::dynamic_buffer(bytes), end_);
        return bytes;
    }

    /// How the relay ended: `eof` with the farewell of TLS, `stream_truncated` without.
    [[nodiscard]] boost::system::error_code end() const { return end_; }

    [[nodiscard]] SSL* ssl() { return stream_.native_handle(); }

    boost::asio::ip::tcp::socket& socket() { return stream_.next_layer(); }

  private:
    static boost::asio::ssl::context with(const Settings& settings) {
        boost::asio::ssl::context tls(boost::asio::ssl::context::tls_client);
        SSL_CTX_set_security_level(tls.native_handle(), 0);
        settings(tls.native_handle());
        return tls;
    }

    boost::asio::io_context context_;
    boost::asio::ssl::context tls_;
    boost::asio::ssl::stream<boost::asio::ip::tcp::socket> stream_{context_, tls_};
    boost::system::error_code end_;
};

} // namespace morvex
