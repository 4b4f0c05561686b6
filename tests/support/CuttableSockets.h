#pragma once

#include "platform/ports/WebSocketClient.h"

#include <memory>
#include <mutex>
#include <string>
#include <utility>

namespace morvex {

/// Wraps another client so that its newest socket can be reset, as by a failing network. It must outlive what
/// connects through it; safe from any thread.
class CuttableSockets final : public WebSocketClient {
  public:
    explicit CuttableSockets(WebSocketClient& sockets) : sockets_(sockets) {}

    Task<Result<std::shared_ptr<WebSocket>>> connect(WebSocketRequest request,
                                                     std::stop_token stop) override {
        auto socket = co_await sockets_.connect(std::move(request), std::move(stop));
        std::lock_guard lock(mutex_);
        if (socket) newest_ = *socket;
        co_return socket;
    }

    void cut() {
        std::lock_guard lock(mutex_);
        if (auto socket = newest_.lock()) socket->close(CloseCode::abnormal);
    }

  private:
    WebSocketClient& sockets_;
    std::mutex mutex_;
    std::weak_ptr<WebSocket> newest_;
};

} // namespace morvex
