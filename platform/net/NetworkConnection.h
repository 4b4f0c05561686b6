#pragma once

#include "foundation/OneShot.h"
#include "platform/net/NetworkCall.h"
#include "platform/net/NetworkThread.h"
#include "shared/base/Error.h"

#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/beast/core/tcp_stream.hpp>

#include <functional>
#include <memory>
#include <stop_token>
#include <utility>

namespace morvex {

/// One connection from its first packet to its last, on a network thread. The thread keeps it until it has
/// ended and nobody else holds it.
class NetworkConnection {
  public:
    /// Called once: with success, or with the failure if the connection could not be opened.
    using Opened = std::move_only_function<void(Result<void>)>;

    virtual ~NetworkConnection() = default;

    NetworkConnection(const NetworkConnection&) = delete;
    NetworkConnection& operator=(const NetworkConnection&) = delete;

    /// Ends the connection at once, without a farewell; waiting calls fail.
    virtual void abandon() = 0;

  protected:
    explicit NetworkConnection(NetworkThread& network);

    /// Ends the socket and everything that waits for it. May be called several times.
    void drop();

    /// Nobody holds the connection any more; it goes once its socket has ended, possibly during this call.
    void letGo();

    virtual boost::beast::tcp_stream& tcp() = 0;

    NetworkThread& network_;
    boost::asio::ip::tcp::resolver resolver_;
    boost::asio::steady_timer timer_; ///< bounds the opening, later the farewell
    bool dropped_ = false;

  private:
    void retire();

    bool released_ = false;
};

using SharedNetwork = std::shared_ptr<NetworkThread>;

/// Makes the network thread call `operation(arguments..., reply)`, after everything requested earlier. The
/// request is queued at once, even if nobody awaits the task; the task waits for the reply.
template <class T, class Connection, class Operation, class... Arguments>
Task<Result<T>> callNow(const SharedNetwork& network, std::weak_ptr<Connection> target, Operation operation,
                        Arguments... arguments) {
    auto shot = std::make_shared<OneShot<Result<T>>>();
    network->post([target = std::move(target), operation, reply = Reply<T>(shot),
                   ... given = std::move(arguments)]() mutable {
        if (auto connection = target.lock())
            std::invoke(operation, *connection, std::move(given)..., std::move(reply));
    });
    return answerOf(std::move(shot));
}

/// Like `callNow`, but the request is queued only when the task is awaited.
template <class T, class Connection, class Operation, class... Arguments>
Task<Result<T>> call(SharedNetwork network, std::weak_ptr<Connection> target, Operation operation,
                     Arguments... arguments) {
    co_return co_await callNow<T>(network, std::move(target), operation, std::move(arguments)...);
}

/// Waits until a connection that `make` creates on the network thread is open, and returns a `Handle` to it,
/// made of network and connection. Fails if `make` or the opening fails, and at once when `stop` is
/// requested.
template <class Port, class Handle, class Connection, class Make>
Task<Result<std::shared_ptr<Port>>> openConnection(SharedNetwork network, Make make, std::stop_token stop) {
    auto shot = std::make_shared<OneShot<Result<std::shared_ptr<Port>>>>();
    // Set on the network thread, for the code that ends the attempt.
    auto attempt = std::make_shared<std::weak_ptr<Connection>>();
    network->post(
        [network, attempt, make = std::move(make), reply = Reply<std::shared_ptr<Port>>(shot)]() mutable {
            Result<std::shared_ptr<Connection>> made = make(*network);
            if (!made) return reply(std::unexpected(std::move(made).error()));
            *attempt = *made;
            network->adopt(*made);
            (*made)->open([network, attempt, reply = std::move(reply)](Result<void> opened) mutable {
                auto connection = attempt->lock();
                if (opened) return reply(std::make_shared<Handle>(network, connection));
                if (connection) connection->release();
                reply(std::unexpected(std::move(opened).error()));
            });
        });
    std::stop_callback onStop(stop, [network, attempt] {
        network->post([attempt] {
            if (auto connection = attempt->lock()) connection->abandon();
        });
    });
    co_return co_await answerOf(std::move(shot));
}

} // namespace morvex
