#pragma once

#include "foundation/Executor.h"
#include "foundation/ThreadExecutor.h"
#include "platform/net/BeastWebSocketClient.h"
#include "platform/net/TlsContext.h"

#include <boost/asio/executor_work_guard.hpp>
#include <boost/asio/io_context.hpp>

#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>

namespace morvex {

class WebSocketConnection;

/// The network thread of one client and the connections on it. The client owns it and stops it; sockets that
/// outlive the client hold on to the empty shell, which drops their jobs.
class WebSocketNetwork {
  public:
    WebSocketNetwork(BeastWebSocketClient::Limits limits, std::string extraAuthorities);

    /// From any thread. After `stop` the job is destroyed unrun.
    void post(Job job);

    /// Resets all connections, waits for their operations to end, and ends the thread. Once.
    void stop();

    /// The rest belongs to the network thread.
    [[nodiscard]] const BeastWebSocketClient::Limits& limits() const { return limits_; }

    boost::asio::io_context& context() { return *context_; }

    TlsContext& tls() { return tls_; }

    void adopt(std::shared_ptr<WebSocketConnection> connection);
    void forget(const std::shared_ptr<WebSocketConnection>& connection);

  private:
    void resetAll();

    const BeastWebSocketClient::Limits limits_;
    TlsContext tls_;
    std::optional<boost::asio::io_context> context_;
    boost::asio::executor_work_guard<boost::asio::io_context::executor_type> work_;
    std::set<std::shared_ptr<WebSocketConnection>> connections_;
    std::mutex mutex_;
    bool stopped_ = false; ///< guarded by `mutex_`
    ThreadExecutor thread_;
};

} // namespace morvex
