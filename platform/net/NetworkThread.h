#pragma once

#include "foundation/Executor.h"
#include "foundation/ThreadExecutor.h"
#include "platform/net/NetworkLimits.h"
#include "platform/net/TlsContext.h"

#include <boost/asio/executor_work_guard.hpp>
#include <boost/asio/io_context.hpp>

#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>

namespace morvex {

class NetworkConnection;

/// The network thread of one client and the connections on it. The client owns it and stops it; what outlives
/// the client holds on to the empty shell, which drops its jobs.
class NetworkThread final : public Executor {
  public:
    /// `name`: of the thread.
    NetworkThread(std::string name, NetworkLimits limits, std::string extraAuthorities);

    void post(Job job) override;

    /// Abandons all connections, waits for their operations to end, and ends the thread. Once.
    void stop();

    /// The rest belongs to the network thread.
    [[nodiscard]] const NetworkLimits& limits() const { return limits_; }

    boost::asio::io_context& context() { return *context_; }

    TlsContext& tls() { return tls_; }

    void adopt(std::shared_ptr<NetworkConnection> connection);
    void forget(const std::shared_ptr<NetworkConnection>& connection);

  private:
    enum class Last { no, yes };

    void run();
    void add(Job job, Last last);
    void wake(boost::asio::io_context& context);
    void runJobs();
    std::optional<Job> nextJob();
    void abandonAll();

    const NetworkLimits limits_;
    TlsContext tls_;
    std::shared_ptr<boost::asio::io_context> context_; ///< a thread that wakes it holds it too
    boost::asio::executor_work_guard<boost::asio::io_context::executor_type> work_;
    std::set<std::shared_ptr<NetworkConnection>> connections_;
    std::mutex mutex_;
    // Guarded by `mutex_`.
    std::deque<Job> jobs_;
    bool awake_ = false; ///< the jobs are being run, or will be
    bool stopped_ = false;
    ThreadExecutor thread_;
};

} // namespace morvex
