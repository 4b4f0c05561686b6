#include "platform/net/WebSocketNetwork.h"

#include "platform/net/WebSocketConnection.h"

#include <boost/asio/post.hpp>

#include <utility>

namespace morvex {

namespace {

/// After so many jobs the sockets have their turn.
constexpr int jobsInTurn = 64;

} // namespace

WebSocketNetwork::WebSocketNetwork(BeastWebSocketClient::Limits limits, std::string extraAuthorities)
    : limits_(limits),
      tls_(std::move(extraAuthorities)),
      context_(std::make_shared<boost::asio::io_context>(1)),
      work_(context_->get_executor()),
      thread_("spojeni") {
    thread_.post([this] { run(); });
}

void WebSocketNetwork::run() {
    Running here(*this);
    context_->run();
}

void WebSocketNetwork::post(Job job) {
    add(std::move(job), Last::no);
}

void WebSocketNetwork::add(Job job, Last last) {
    std::shared_ptr<boost::asio::io_context> sleeping;
    {
        std::lock_guard lock(mutex_);
        if (stopped_) return;
        stopped_ = last == Last::yes;
        jobs_.push_back(std::move(job));
        if (!std::exchange(awake_, true)) sleeping = context_;
    }
    // Without the lock, for which the thread that wakes would have to wait at once.
    if (sleeping) wake(*sleeping);
}

void WebSocketNetwork::wake(boost::asio::io_context& context) {
    boost::asio::post(context, [this] { runJobs(); });
}

void WebSocketNetwork::runJobs() {
    for (int taken = 0; taken < jobsInTurn; ++taken) {
        auto job = nextJob();
        if (!job) return;
        (*job)();
    }
    wake(*context_);
}

std::optional<Job> WebSocketNetwork::nextJob() {
    std::lock_guard lock(mutex_);
    if (jobs_.empty()) {
        awake_ = false;
        return std::nullopt;
    }
    auto job = std::move(jobs_.front());
    jobs_.pop_front();
    return job;
}

void WebSocketNetwork::stop() {
    add([this] { resetAll(); }, Last::yes);
    thread_.close();
    // The thread may have ended before it began to run the context.
    jobs_.clear();
    work_.reset();
    context_.reset();
}

void WebSocketNetwork::adopt(std::shared_ptr<WebSocketConnection> connection) {
    connections_.insert(std::move(connection));
}

void WebSocketNetwork::forget(const std::shared_ptr<WebSocketConnection>& connection) {
    connections_.erase(connection);
}

void WebSocketNetwork::resetAll() {
    for (const auto& connection : std::exchange(connections_, {})) connection->close(CloseCode::abnormal);
    work_.reset();
}

} // namespace morvex
