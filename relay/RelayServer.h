#pragma once

#include "relay/RelayOptions.h"
#include "relay/RelayState.h"
#include "relay/StoreUpkeep.h"

#include <boost/asio/awaitable.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/signal_set.hpp>
#include <boost/asio/ssl/context.hpp>
#include <boost/asio/steady_timer.hpp>

#include <chrono>
#include <memory>
#include <optional>
#include <string>

namespace morvex {

/// The whole relay, on one port and on the thread that calls `run`. Order of calls: `create`, `run` once,
/// `stop` from anywhere.
class RelayServer {
  public:
    /// Listens when it returns. The failure's text is for the operator.
    static Result<std::unique_ptr<RelayServer>> create(const RelayOptions& options, const RelayLimits& limits,
                                                       PairStore store, RelayLog log);

    RelayServer(const RelayServer&) = delete;
    RelayServer& operator=(const RelayServer&) = delete;

    /// The address for devices, with the port that is actually open: `http://127.0.0.1:8787`.
    [[nodiscard]] std::string address() const;
    [[nodiscard]] std::uint16_t port() const;

    /// From now on SIGINT and SIGTERM stop the relay.
    void stopOnSignals();
    /// Serves until it is stopped and the WebSockets are closed, or the time for that is over.
    void run();
    /// From any thread; may be called more than once.
    void stop();

  private:
    using Tcp = boost::asio::ip::tcp;
    using Moment = std::chrono::steady_clock::time_point;

    RelayServer(const RelayLimits& limits, PairStore store, RelayLog log);

    Result<void> listen(const std::string& host, const std::string& port);
    boost::asio::awaitable<void> acceptConnections();
    void serve(Tcp::socket socket);
    boost::asio::awaitable<void> watch();
    void tick(Moment now);
    void lookAfterStore(Moment now);
    /// Connects the store with its upkeep; without a file this thread does the upkeep.
    Result<void> startUpkeep();
    void startStopping();

    boost::asio::io_context context_{1};
    std::optional<boost::asio::ssl::context> tls_;
    Tcp::acceptor acceptor_{context_};
    boost::asio::signal_set signals_{context_};
    boost::asio::steady_timer tickTimer_{context_};
    std::shared_ptr<RelayState> state_;
    /// Null for a store without a file.
    std::unique_ptr<StoreUpkeep> upkeep_;
    Moment nextSweep_;
    Moment nextUse_;
    std::optional<Moment> stoppingSince_;
};

} // namespace morvex
