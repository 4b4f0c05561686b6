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

/// The network thread of one client and its connections. The client owns it and stops it; objects that
/// outlive the client keep the stopped thread object alive, which drops their jobs.
class NetworkThread final : public Executor {
  public:
    /// `name` is the name of the thread.
    NetworkThread(std::string name, NetworkLimits limits, std::string extraAuthorities);

    void post(Job job) override;

    /// Abandons all connections, waits for their operations to end, and ends the thread. Once.
    void stop();

    /// The members below may be used only on the network thread.
    [[nodiscard]] const NetworkLimits& limits() const { return limits_; }

    boost::asio::io_context& context() { return *context_; }

    TlsContext& tls() { return tls_; }

    void adopt(std::shared_ptr<NetworkConnection> connection);
    void forget(const NetworkConnection& connection);

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
    std::shared_ptr<boost::asio::io_context> context_; ///< shared with a thread that is waking the context
    boost::asio::executor_work_guard<boost::asio::io_context::executor_type> work_;
    std::set<std::shared_ptr<NetworkConnection>> connections_;
    std::mutex mutex_;
    // Guarded by `mutex_`.
    std::deque<Job> jobs_;
    bool awake_ = false; ///< the jobs are being run or soon will be
    bool stopped_ = false;
    ThreadExecutor thread_;
};

} // namespace morvex
