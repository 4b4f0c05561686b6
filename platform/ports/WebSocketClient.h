#pragma once

#include "foundation/Task.h"
#include "platform/ports/NetworkError.h"
#include "shared/base/Error.h"
#include "shared/base/FrameLimit.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <stop_token>
#include <string>
#include <utility>
#include <vector>

namespace morvex {

/// Close codes of RFC 6455, section 7.4.1. 1006 cannot be sent: closing with it aborts the connection.
enum class CloseCode : std::uint16_t { normal = 1000, goingAway = 1001, abnormal = 1006 };

/// How to open a connection.
struct WebSocketRequest {
    std::string url;                                            ///< ws or wss, nothing else
    std::vector<std::pair<std::string, std::string>> headers{}; ///< in addition to those of the handshake
    std::size_t sendLimit = std::size_t{64} * 1024 * 1024;      ///< bytes of texts that may wait to be sent
};

struct WebSocketFrame {
    enum class Kind { text, binary, other };
    Kind kind = Kind::text;
    std::string data;
};

/// An open WebSocket. One `receive` at a time; sends keep their order. Failures are `NetworkError`.
class WebSocket {
  public:
    virtual ~WebSocket() = default;

    /// Queues the text at the moment of the call, from any thread, even if nobody awaits the task. The task
    /// completes when the frame has been handed to the system, so that a slow peer slows a sender that awaits
    /// it. If this text and other waiting ones would exceed `sendLimit` together, the call fails and does not
    /// send it; the socket stays open.
    virtual Task<Result<void>> sendText(std::string text) = 0;

    /// The next whole message of at most `frameLimit` bytes; a longer one is skipped. Fails when the socket
    /// was closed by either side or broke, after everything that had arrived by then was taken.
    virtual Task<Result<WebSocketFrame>> receive() = 0;

    /// Resumes at the pong to this ping, or at a `notReadingPong`. Fails when the socket ends first.
    virtual Task<Result<void>> ping() = 0;

    /// Whether this end reads what the other one sends. It holds back while too much waits for `receive`, and
    /// then sees no pong either.
    struct Reading {
        bool isHeldBack = false;
        std::uint64_t pauses = 0; ///< how often it has paused so far
        bool operator==(const Reading&) const = default;
    };

    /// From any thread.
    [[nodiscard]] virtual Reading reading() const = 0;

    /// Requested when the socket was closed by either side or broke; `receive` then still returns what had
    /// arrived. From any thread; the token stays valid after the socket is destroyed.
    [[nodiscard]] virtual std::stop_token ended() const = 0;

    /// Ends the socket; calls that wait fail. From any thread, any number of times.
    virtual void close(CloseCode code) = 0;
};

class WebSocketClient {
  public:
    virtual ~WebSocketClient() = default;

    /// Connects (certificate and host name verified). Fails with `NetworkError`: after 60 seconds at the
    /// latest, and at once when `stop` is requested.
    virtual Task<Result<std::shared_ptr<WebSocket>>> connect(WebSocketRequest request,
                                                             std::stop_token stop) = 0;
};

} // namespace morvex
