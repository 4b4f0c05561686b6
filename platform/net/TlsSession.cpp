#include "platform/net/TlsSession.h"

#include "platform/net/Dialing.h"
#include "shared/base/Require.h"
#include "shared/base/SystemTrouble.h"

#include <boost/asio/buffer.hpp>
#include <boost/asio/co_spawn.hpp>
#include <boost/asio/ssl/error.hpp>
#include <boost/asio/write.hpp>

#include <exception>
#include <utility>

namespace morvex {

namespace {

namespace asio = boost::asio;
using boost::system::error_code;

/// The prefix of log lines.
constexpr std::string_view tlsLog = "TLS";

/// Many servers end the connection without the closing alert of TLS (RFC 8446, section 6.1). That is
/// accepted, since line protocols notice by themselves if something is missing.
bool isEndOfStream(error_code error) {
    return error == asio::error::eof || error == asio::ssl::error::stream_truncated;
}

} // namespace

TlsSession::TlsSession(NetworkThread& network, asio::ssl::context& tls, std::string host, std::uint16_t port)
    : NetworkConnection(network),
      host_(std::move(host)),
      port_(std::to_string(port)),
      stream_(boost::beast::tcp_stream(network.context()), tls) {}

void TlsSession::open(Opened opened) {
    opened_ = std::move(opened);
    auto self = shared_from_this();
    timer_.expires_after(network_.limits().opening);
    timer_.async_wait([self](error_code error) {
        if (!error && self->opened_) self->fall(popis(SystemTrouble::timedOut));
    });
    asio::co_spawn(network_.context(), connect(), [self](const std::exception_ptr& exception) {
        if (exception) std::rethrow_exception(exception);
    });
}

asio::awaitable<void> TlsSession::connect() {
    auto [notFound, addresses] = co_await findHost(resolver_, host_, port_);
    if (failed(notFound)) co_return;
    if (failed(co_await connectTo(std::move(addresses), tcp()))) co_return;
    if (!failed(co_await shakeHands(stream_, host_))) opened();
}

void TlsSession::opened() {
    timer_.cancel();
    std::exchange(opened_, nullptr)({});
}

void TlsSession::send(std::string bytes, Reply<void> reply) {
    if (failure_) return reply(fail(*failure_));
    require(!writing_, "two sends wait on one connection");
    outgoing_ = std::move(bytes);
    sender_ = std::move(reply);
    writing_ = true;
    asio::async_write(stream_, asio::buffer(outgoing_),
                      [self = shared_from_this()](error_code error, std::size_t) {
                          self->writing_ = false;
                          if (!self->failed(error)) (*std::exchange(self->sender_, std::nullopt))({});
                      });
}

void TlsSession::receive(Reply<std::string> reply) {
    if (failure_) return reply(fail(*failure_));
    if (hasEnded_) return reply(std::string());
    require(!reading_, "two receives wait on one connection");
    receiver_ = std::move(reply);
    reading_ = true;
    stream_.async_read_some(
        asio::buffer(incoming_),
        [self = shared_from_this()](error_code error, std::size_t size) { self->arrived(error, size); });
}

void TlsSession::arrived(error_code error, std::size_t size) {
    reading_ = false;
    hasEnded_ = isEndOfStream(error);
    if (failed(hasEnded_ ? error_code() : error)) return;
    (*std::exchange(receiver_, std::nullopt))(std::string(incoming_.data(), size));
}

bool TlsSession::failed(error_code error) {
    // Errors that follow a failure are neither reported nor logged.
    if (error && !failure_) fall(wordsFor(tlsLog, error, stream_.native_handle()));
    return failure_.has_value();
}

void TlsSession::fall(Sentence words) {
    if (!failure_) failure_ = NetworkError{std::move(words)};
    failWaiting();
    drop();
}

void TlsSession::failWaiting() {
    if (auto opened = std::exchange(opened_, nullptr)) opened(fail(*failure_));
    if (auto sender = std::exchange(sender_, std::nullopt)) (*sender)(fail(*failure_));
    if (auto receiver = std::exchange(receiver_, std::nullopt)) (*receiver)(fail(*failure_));
}

void TlsSession::close() {
    if (farewell_) return;
    const bool mayTell = !opened_ && !failure_ && !reading_ && !writing_;
    if (!mayTell) return abandon();
    farewell_ = true;
    failure_ = NetworkError{"Spojení je zavřené."_sentence};
    auto self = shared_from_this();
    timer_.expires_after(network_.limits().closing);
    timer_.async_wait([self](error_code error) {
        if (!error) self->drop();
    });
    stream_.async_shutdown([self](error_code) { self->drop(); });
}

void TlsSession::abandon() {
    fall("Spojení je zavřené."_sentence);
}

void TlsSession::release() {
    if (!failure_) close();
    letGo();
}

} // namespace morvex
