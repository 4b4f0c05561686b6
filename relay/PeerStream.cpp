#include "relay/PeerStream.h"

#include <boost/asio/as_tuple.hpp>
#include <boost/asio/use_awaitable.hpp>

namespace morvex {

namespace asio = boost::asio;

asio::awaitable<bool> PeerStream::handshake() {
    if (!tls_) co_return true;
    auto [error] =
        co_await tls_->async_handshake(asio::ssl::stream_base::server, asio::as_tuple(asio::use_awaitable));
    co_return !error;
}

} // namespace morvex
