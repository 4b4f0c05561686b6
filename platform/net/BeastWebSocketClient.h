#pragma once

#include "foundation/Executor.h"
#include "platform/net/NetworkLimits.h"
#include "platform/ports/WebSocketClient.h"

#include <memory>
#include <string>

namespace morvex {

class NetworkThread;

/// WebSockets over TCP and TLS (1.2 or newer; certificate and host name are always verified against the
/// system's authorities). All sockets of a client run on one thread of its own.
///
/// Calls may come from any thread. A socket whose last handle is gone is reset. When the client is destroyed,
/// its sockets are reset and all waiting calls fail; its destructor may wait for a name look-up in progress,
/// whose time the system bounds.
class BeastWebSocketClient final : public WebSocketClient {
  public:
    BeastWebSocketClient() : BeastWebSocketClient(NetworkLimits{}) {}

    /// `extraAuthorities`: certificates (PEM) that are trusted in addition to the system's.
    explicit BeastWebSocketClient(NetworkLimits limits, std::string extraAuthorities = {});
    ~BeastWebSocketClient() override;

    Task<Result<std::shared_ptr<WebSocket>>> connect(WebSocketRequest request, std::stop_token stop) override;

    /// The thread of the sockets, for the code that uses them most: a frame then passes without waking
    /// another thread. Work on this executor delays all sockets.
    Executor& executor();

  private:
    std::shared_ptr<NetworkThread> network_;
};

} // namespace morvex
