#pragma once

#include "foundation/Executor.h"
#include "platform/net/NetworkLimits.h"
#include "platform/ports/WebSocketClient.h"

#include <memory>
#include <string>

namespace morvex {

class NetworkThread;

/// WebSockets over TCP and TLS (1.2 or newer; certificate and host name are always verified against the
/// system's authorities). All sockets of a client live on one thread of its own.
///
/// Calls may come from any thread. A socket that nobody holds any more is reset. When the client goes, its
/// sockets are reset and all waiting calls fail; its destructor may wait for a name look-up that is under
/// way, which the system bounds.
class BeastWebSocketClient final : public WebSocketClient {
  public:
    BeastWebSocketClient() : BeastWebSocketClient(NetworkLimits{}) {}

    /// `extraAuthorities`: certificates (PEM) trusted beside the system's.
    explicit BeastWebSocketClient(NetworkLimits limits, std::string extraAuthorities = {});
    ~BeastWebSocketClient() override;

    Task<Result<std::shared_ptr<WebSocket>>> connect(WebSocketRequest request, std::stop_token stop) override;

    /// The thread of the sockets, for what talks to them most: there a frame goes from hand to hand without
    /// waking another thread. What runs here delays all sockets.
    Executor& executor();

  private:
    std::shared_ptr<NetworkThread> network_;
};

} // namespace morvex
