#include "relay/PeerStream.h"

#include <boost/asio/as_tuple.hpp>
#include <boost/asio/use_awaitable.hpp>

#include <tuple>

namespace morvex {

namespace asio = boost::asio;

namespace {

constexpr auto asTuple = asio::as_tuple(asio::use_awaitable);

/// Repeats a TLS step until it needs nothing more. Returns false when it failed.
asio::awaitable<bool> complete(std::shared_ptr<PeerConnection> connection,
                               TlsChannel::Outcome (TlsChannel::*step)()) {
    for (;;) {
        const auto outcome = (connection->tls()->*step)();
        if (outcome.need == TlsChannel::Need::nothing) co_return !outcome.error;
        auto [error] = co_await connection->ready(outcome.need, asTuple);
        if (error) co_return false;
    }
}

} // namespace

asio::awaitable<bool> PeerStream::handshake() {
    if (!connection_->tls()) co_return true;
    co_return co_await complete(connection_, &TlsChannel::handshake);
}

asio::awaitable<void> PeerStream::sayEnd() {
    if (connection_->tls()) std::ignore = co_await complete(connection_, &TlsChannel::sayEnd);
    boost::system::error_code ignored;
    std::ignore = connection_->socket().shutdown(Socket::shutdown_send, ignored);
}

} // namespace morvex
