#pragma once

#include "relay/PeerConnection.h"

#include <boost/asio/buffer.hpp>
#include <boost/asio/error.hpp>
#include <boost/asio/post.hpp>
#include <boost/beast/core/role.hpp>
#include <boost/beast/websocket/error.hpp>
#include <boost/beast/websocket/teardown.hpp>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>

namespace morvex {

/// The read direction of a `PeerTransfer`.
template <class Buffers> struct Reading {
    Buffers buffers;

    template <class Handler> static void start(PeerConnection& connection, Buffers given, Handler&& handler) {
        connection.socket().async_read_some(given, std::forward<Handler>(handler));
    }

    /// Into the first buffer that is not empty.
    TlsChannel::Outcome attempt(TlsChannel& tls) const {
        const auto end = boost::asio::buffer_sequence_end(buffers);
        for (auto at = boost::asio::buffer_sequence_begin(buffers); at != end; ++at)
            if (const boost::asio::mutable_buffer one = *at; one.size() > 0) return tls.read(one);
        return {};
    }

    static void count(ByteMeter& meter, std::size_t bytes) { meter.bytesRead += bytes; }

    /// Screens the bytes before they are passed on.
    [[nodiscard]] boost::system::error_code examine(FrameScreen& screen, std::size_t bytes) const {
        const auto end = boost::asio::buffer_sequence_end(buffers);
        for (auto at = boost::asio::buffer_sequence_begin(buffers); at != end && bytes > 0; ++at) {
            const boost::asio::mutable_buffer one = *at;
            const auto count = std::min(bytes, one.size());
            if (!screen.pass({static_cast<std::uint8_t*>(one.data()), count}))
                return boost::beast::websocket::error::bad_close_code;
            bytes -= count;
        }
        return {};
    }
};

/// The write direction of a `PeerTransfer`.
template <class Buffers> struct Writing {
    Buffers buffers;

    template <class Handler> static void start(PeerConnection& connection, Buffers given, Handler&& handler) {
        connection.socket().async_write_some(given, std::forward<Handler>(handler));
    }

    /// Writes at most one TLS record. The head and the payload of a frame are separate buffers; they are
    /// combined into one record.
    TlsChannel::Outcome attempt(TlsChannel& tls) const {
        const boost::asio::const_buffer first = *boost::asio::buffer_sequence_begin(buffers);
        if (first.size() >= SSL3_RT_MAX_PLAIN_LENGTH || first.size() == boost::asio::buffer_size(buffers))
            return tls.write(first);
        std::array<char, SSL3_RT_MAX_PLAIN_LENGTH> record;
        const auto size = boost::asio::buffer_copy(boost::asio::buffer(record), buffers);
        return tls.write(boost::asio::buffer(record.data(), size));
    }

    static void count(ByteMeter& meter, std::size_t bytes) { meter.bytesWritten += bytes; }

    static boost::system::error_code examine(FrameScreen&, std::size_t) { return {}; }
};

/// One `async_read_some` or `async_write_some`, for `async_compose`. Over TLS it tries at once and then each
/// time the socket becomes ready; without TLS it uses the socket's own operation.
template <class Direction> class PeerTransfer {
  public:
    PeerTransfer(std::shared_ptr<PeerConnection> connection, Direction direction)
        : connection_(std::move(connection)), direction_(std::move(direction)) {}

    template <class Self>
    void operator()(Self& self, boost::system::error_code error = {}, std::size_t bytes = 0) {
        switch (stage_) {
        case Stage::begun:
            return connection_->tls() ? attempt(self) : startPlain(self);
        case Stage::plain:
            direction_.count(connection_->meter(), bytes);
            outcome_ = {.error = error, .bytes = bytes};
            examine();
            return self.complete(outcome_.error, outcome_.bytes);
        case Stage::waiting:
            // The buffers may be gone if the socket was closed meanwhile.
            if (!error && !connection_->socket().is_open()) error = boost::asio::error::operation_aborted;
            return error ? self.complete(error, 0) : attempt(self);
        case Stage::posted:
            return self.complete(outcome_.error, outcome_.bytes);
        }
    }

  private:
    enum class Stage { begun, plain, waiting, posted };

    // Moving `self` also moves this object, so everything needed afterwards is copied out before.

    template <class Self> void startPlain(Self& self) {
        stage_ = Stage::plain;
        const auto connection = connection_;
        Direction::start(*connection, direction_.buffers, std::move(self));
    }

    template <class Self> void attempt(Self& self) {
        outcome_ = direction_.attempt(*connection_->tls());
        const auto connection = connection_;
        const auto need = outcome_.need;
        if (need != TlsChannel::Need::nothing) {
            stage_ = Stage::waiting;
            return void(connection->ready(need, std::move(self)));
        }
        examine();
        if (stage_ == Stage::waiting) return self.complete(outcome_.error, outcome_.bytes);
        // The handler must not be called within the call that started the operation.
        stage_ = Stage::posted;
        boost::asio::post(connection->socket().get_executor(), std::move(self));
    }

    void examine() {
        auto* screen = connection_->screen();
        if (!screen || outcome_.error) return;
        outcome_.error = direction_.examine(*screen, outcome_.bytes);
        if (outcome_.error) outcome_.bytes = 0;
    }

    std::shared_ptr<PeerConnection> connection_;
    Direction direction_;
    TlsChannel::Outcome outcome_{};
    Stage stage_ = Stage::begun;
};

/// The end of a connection, for `async_compose`: the farewell of TLS, then that of TCP.
class PeerFarewell {
  public:
    PeerFarewell(std::shared_ptr<PeerConnection> connection, boost::beast::role_type role)
        : connection_(std::move(connection)), role_(role) {}

    template <class Self> void operator()(Self& self, boost::system::error_code error = {}) {
        if (isSaid_) return self.complete(error);
        const auto connection = connection_;
        if (auto* tls = connection->tls(); tls && !error)
            if (const auto need = tls->sayEnd().need; need != TlsChannel::Need::nothing)
                return void(connection->ready(need, std::move(self)));
        isSaid_ = true;
        boost::beast::websocket::async_teardown(role_, connection->socket(), std::move(self));
    }

  private:
    std::shared_ptr<PeerConnection> connection_;
    boost::beast::role_type role_;
    bool isSaid_ = false;
};

} // namespace morvex
