#pragma once

#include "foundation/Executor.h"
#include "platform/ports/WebSocketClient.h"

#include <chrono>
#include <memory>
#include <string>

namespace morvex {

class WebSocketNetwork;

/// WebSockets over TCP and TLS (1.2 or newer; certificate and host name are always verified against the
/// system's authorities). All sockets of a client live on one thread of its own.
///
/// Calls may come from any thread. A socket that nobody holds any more is reset. When the client goes, its
/// sockets are reset and all waiting calls fail; its destructor may wait for a name look-up that is under
/// way, which the system bounds.
class BeastWebSocketClient final : public WebSocketClient {
  public:
    struct Limits {
        std::chrono::milliseconds opening{60'000}; ///< from the name look-up to the end of the handshakes
        std::chrono::milliseconds closing{2'000};  ///< how long a peer may take to answer the close frame
    };

    BeastWebSocketClient() : BeastWebSocketClient(Limits{}) {}

    /// `extraAuthorities`: certificates (PEM) trusted beside the system's.
    explicit BeastWebSocketClient(Limits limits, std::string extraAuthorities = {});
    ~BeastWebSocketClient() override;

    Task<Result<std::shared_ptr<WebSocket>>> connect(WebSocketRequest request, std::stop_token stop) override;

    /// The thread of the sockets, for what talks to them most: there a frame goes from hand to hand without
    /// waking another thread. What runs here delays all sockets.
    Executor& executor();

  private:
    std::shared_ptr<WebSocketNetwork> network_;
};

} // namespace morvex
