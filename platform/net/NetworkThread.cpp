#include "platform/net/NetworkThread.h"

#include "platform/net/NetworkConnection.h"

#include <boost/asio/post.hpp>

#include <algorithm>
#include <utility>

namespace morvex {

namespace {

/// After this many jobs the sockets get their turn.
constexpr int jobsInTurn = 64;

} // namespace

NetworkThread::NetworkThread(std::string name, NetworkLimits limits, std::string extraAuthorities)
    : limits_(limits),
      tls_(std::move(extraAuthorities)),
      context_(std::make_shared<boost::asio::io_context>(1)),
      work_(context_->get_executor()),
      thread_(std::move(name)) {
    thread_.post([this] { run(); });
}

void NetworkThread::run() {
    Running here(*this);
    context_->run();
}

void NetworkThread::post(Job job) {
    add(std::move(job), Last::no);
}

void NetworkThread::add(Job job, Last last) {
    std::shared_ptr<boost::asio::io_context> sleeping;
    {
        std::lock_guard lock(mutex_);
        if (stopped_) return;
        stopped_ = last == Last::yes;
        jobs_.push_back(std::move(job));
        if (!std::exchange(awake_, true)) sleeping = context_;
    }
    // Wakes the thread without the lock, since it would need that lock at once.
    if (sleeping) wake(*sleeping);
}

void NetworkThread::wake(boost::asio::io_context& context) {
    boost::asio::post(context, [this] { runJobs(); });
}

void NetworkThread::runJobs() {
    for (int taken = 0; taken < jobsInTurn; ++taken) {
        auto job = nextJob();
        if (!job) return;
        (*job)();
    }
    wake(*context_);
}

std::optional<Job> NetworkThread::nextJob() {
    std::lock_guard lock(mutex_);
    if (jobs_.empty()) {
        awake_ = false;
        return std::nullopt;
    }
    auto job = std::move(jobs_.front());
    jobs_.pop_front();
    return job;
}

void NetworkThread::stop() {
    add([this] { abandonAll(); }, Last::yes);
    thread_.close();
    // The thread may have ended before it ran the context.
    jobs_.clear();
    work_.reset();
    context_.reset();
}

void NetworkThread::adopt(std::shared_ptr<NetworkConnection> connection) {
    connections_.insert(std::move(connection));
}

void NetworkThread::forget(const NetworkConnection& connection) {
    const auto place = std::ranges::find(connections_, &connection, &std::shared_ptr<NetworkConnection>::get);
    if (place != connections_.end()) connections_.erase(place);
}

void NetworkThread::abandonAll() {
    for (const auto& connection : std::exchange(connections_, {})) connection->abandon();
    work_.reset();
}

} // namespace morvex
