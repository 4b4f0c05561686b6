#include "relay/PeerConnection.h"

#include <tuple>

namespace morvex {

using Clock = std::chrono::steady_clock;

PeerConnection::PeerConnection(Socket socket, boost::asio::ssl::context* context)
    : socket_(std::move(socket)), deadline_(socket_.get_executor()) {
    if (context) tls_.emplace(*context, socket_, meter_);
}

void PeerConnection::expiresAfter(Clock::duration time) {
    deadline_.expires_after(time);
    deadline_.async_wait([weak = weak_from_this()](boost::system::error_code error) {
        const auto self = weak.lock();
        // If the deadline was moved just after it expired, the handler is called without an error.
        if (!error && self && self->deadline_.expiry() <= Clock::now()) self->close();
    });
}

void PeerConnection::expiresNever() {
    deadline_.expires_at(Clock::time_point::max());
}

void PeerConnection::close() {
    boost::system::error_code ignored;
    std::ignore = socket_.close(ignored);
}

} // namespace morvex
