#include "relay/RelayServer.h"

#include "platform/posix/base/Process.h"
#include "relay/HttpSession.h"
#include "relay/SocketSession.h"
#include "relay/TlsSettings.h"
#include "shared/base/Try.h"

#include <boost/asio/as_tuple.hpp>
#include <boost/asio/co_spawn.hpp>
#include <boost/asio/detached.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/use_awaitable.hpp>

#include <tuple>
#include <utility>

namespace morvex {

namespace asio = boost::asio;

namespace {

constexpr auto asTuple = asio::as_tuple(asio::use_awaitable);
constexpr std::chrono::minutes sweepEvery{10};
/// How often the pairs of long connections count as used.
constexpr std::chrono::hours useEvery{6};
constexpr std::chrono::milliseconds pauseAfterFailedAccept{100};
/// While stopping, the relay checks often whether all connections have ended.
constexpr std::chrono::milliseconds stoppingTick{10};

using ErrorCode = boost::system::error_code;

Date today() {
    return std::chrono::time_point_cast<Date::duration>(std::chrono::system_clock::now());
}

} // namespace

RelayServer::RelayServer(const RelayLimits& limits, PairStore store, RelayLog log)
    : state_(std::make_shared<RelayState>(limits, std::move(store), std::move(log))) {}

Result<std::unique_ptr<RelayServer>>
RelayServer::create(const RelayOptions& options, const RelayLimits& limits, PairStore store, RelayLog log) {
    std::unique_ptr<RelayServer> server{new RelayServer{limits, std::move(store), std::move(log)}};
    if (options.tls) {
        TRY(auto, context, loadTls(*options.tls));
        server->tls_.emplace(std::move(context));
    }
    CHECK(server->listen(options.host, options.port));
    CHECK(server->startUpkeep());
    return server;
}

Result<void> RelayServer::startUpkeep() {
    if (state_->store.file().empty()) {
        state_->pairUsed = [state = state_.get()](const PairID& pair) {
            std::ignore = state->store.keep({&pair, 1}, today());
        };
        return {};
    }
    TRY(auto, upkeep, StoreUpkeep::create(state_->store.file(), state_->log));
    upkeep_ = std::move(upkeep);
    state_->pairUsed = [keeper = upkeep_.get()](const PairID& pair) { keeper->used(pair); };
    upkeep_->start();
    return {};
}

Result<void> RelayServer::listen(const std::string& host, const std::string& port) {
    ErrorCode error;
    const auto refuse = [&] {
        return fail(TextError{"cannot listen on " + host + " port " + port + ": " + error.message()});
    };
    Tcp::resolver resolver{context_};
    const auto found = resolver.resolve(host, port, Tcp::resolver::passive, error);
    if (error) return refuse();
    const auto endpoint = found.begin()->endpoint();
    if (acceptor_.open(endpoint.protocol(), error) ||
        acceptor_.set_option(Tcp::acceptor::reuse_address{true}, error) || acceptor_.bind(endpoint, error) ||
        acceptor_.listen(asio::socket_base::max_listen_connections, error))
        return refuse();
    return {};
}

std::string RelayServer::address() const {
    const auto endpoint = acceptor_.local_endpoint();
    const auto host = endpoint.address().to_string();
    return std::string{tls_ ? "https://" : "http://"} +
           (endpoint.address().is_v6() ? "[" + host + "]" : host) + ":" + std::to_string(endpoint.port());
}

std::uint16_t RelayServer::port() const {
    return acceptor_.local_endpoint().port();
}

void RelayServer::stopOnSignals() {
    for (const int signal : heededEndSignals()) signals_.add(signal);
    signals_.async_wait([this](ErrorCode error, int) {
        if (!error) startStopping();
    });
}

void RelayServer::run() {
    asio::co_spawn(context_, acceptConnections(), asio::detached);
    asio::co_spawn(context_, watch(), asio::detached);
    context_.run();
}

void RelayServer::stop() {
    asio::post(context_, [this] { startStopping(); });
}

asio::awaitable<void> RelayServer::acceptConnections() {
    asio::steady_timer pause{context_};
    while (acceptor_.is_open()) {
        auto [error, socket] = co_await acceptor_.async_accept(asTuple);
        if (!error) {
            serve(std::move(socket));
        } else if (acceptor_.is_open()) {
            // Most likely there is no free file descriptor; one will become free.
            pause.expires_after(pauseAfterFailedAccept);
            co_await pause.async_wait(asTuple);
        }
    }
}

void RelayServer::serve(Tcp::socket socket) {
    ErrorCode ignored;
    const auto address = socket.remote_endpoint(ignored).address();
    if (stoppingSince_ || ignored) return;
    const auto now = Moment::clock::now();
    const auto origin = Origin::of(address, state_->limits.thisComputer);
    auto place =
        state_->connectionLimit.admits(origin, now) ? state_->places.enter(origin, now) : std::nullopt;
    if (!place) return state_->events.note("a connection is refused", origin, "a connection is refused", now);
    std::ignore = socket.set_option(Tcp::no_delay{true}, ignored);
    auto session =
        std::make_unique<HttpSession>(std::move(socket), tls_ ? &*tls_ : nullptr, state_, *std::move(place));
    asio::co_spawn(context_, HttpSession::serve(std::move(session)), asio::detached);
}

asio::awaitable<void> RelayServer::watch() {
    for (;;) {
        tick(Moment::clock::now());
        tickTimer_.expires_after(stoppingSince_ ? stoppingTick : state_->limits.tick);
        co_await tickTimer_.async_wait(asTuple);
    }
}

void RelayServer::tick(Moment now) {
    std::erase_if(state_->sockets, [](const auto& socket) { return socket.expired(); });
    const auto sockets = state_->sockets;
    for (const auto& one : sockets)
        if (const auto socket = one.lock()) socket->tick(now);
    state_->places.endSilent(now);
    state_->events.tick(now);
    lookAfterStore(now);
    const bool isStopped = stoppingSince_ && state_->places.taken() == 0;
    const bool isOverdue = stoppingSince_ && now - *stoppingSince_ > state_->limits.closing;
    if (isStopped || isOverdue) context_.stop();
}

void RelayServer::lookAfterStore(Moment now) {
    if (now >= nextUse_) {
        nextUse_ = now + useEvery;
        for (const auto& pair : state_->switchboard.connectedPairs()) state_->pairUsed(pair);
    }
    if (upkeep_ || now < nextSweep_) return;
    const auto swept = state_->store.sweep(today());
    if (!swept) state_->log("sweeping failed: " + swept.error().popis().czech());
    if (!swept || !*swept) nextSweep_ = now + sweepEvery;
}

void RelayServer::startStopping() {
    if (stoppingSince_) return;
    stoppingSince_ = Moment::clock::now();
    state_->log("stopping");
    ErrorCode ignored;
    std::ignore = acceptor_.close(ignored);
    for (const auto& one : state_->sockets)
        if (const auto socket = one.lock()) socket->goAway();
    tickTimer_.cancel();
}

} // namespace morvex
