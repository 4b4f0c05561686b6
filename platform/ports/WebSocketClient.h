#pragma once

#include "foundation/Task.h"
#include "platform/ports/NetworkError.h"
#include "shared/base/Error.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <stop_token>
#include <string>

namespace morvex {

/// Close codes of RFC 6455, section 7.4.1. 1006 cannot be sent: closing with it aborts the connection.
enum class CloseCode : std::uint16_t { goingAway = 1001, abnormal = 1006 };

struct WebSocketFrame {
    enum class Kind { text, binary, other };
    Kind kind = Kind::text;
    std::string data;
};

/// An open WebSocket. One `receive` at a time; sends keep their order. Failures are `NetworkError`.
class WebSocket {
  public:
    virtual ~WebSocket() = default;

    /// Resumes when the frame has been handed to the system, so that a slow peer slows the sender.
    virtual Task<Result<void>> sendText(std::string text) = 0;

    /// The next whole message. Fails once the socket is closed by either side or broken.
    virtual Task<Result<WebSocketFrame>> receive() = 0;

    /// Resumes when the pong to this ping has arrived. Fails when the socket ends first.
    virtual Task<Result<void>> ping() = 0;

    /// Ends the socket, also while other calls wait: those fail. From any thread, any number of times.
    virtual void close(CloseCode code) = 0;
};

class WebSocketClient {
  public:
    /// The largest message that is received; a larger one breaks the connection. The relay takes no larger
    /// ones either.
    static constexpr std::size_t messageLimit = 4 * 1024 * 1024;

    virtual ~WebSocketClient() = default;

    /// Connects to a ws or wss address (certificate and host name verified). Fails with `NetworkError`: after
    /// 60 seconds at the latest, and at once when `stop` is requested.
    virtual Task<Result<std::shared_ptr<WebSocket>>> connect(std::string url, std::stop_token stop) = 0;
};

} // namespace morvex
