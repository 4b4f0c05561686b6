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

/// What a connection begins with.
struct WebSocketRequest {
    std::string url;                                            ///< ws or wss, nothing else
    std::vector<std::pair<std::string, std::string>> headers{}; ///< beside those of the handshake
    std::size_t sendLimit = std::size_t{64} * 1024 * 1024;      ///< bytes of texts that wait to be sent
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

    /// Takes its place behind what was sent before, from any thread, when it is called: nobody has to wait
    /// for the task. That ends when the frame has been handed to the system, so that a slow peer slows a
    /// sender that waits. Where the text would exceed `sendLimit` together with others it fails, and is not
    /// sent; the socket stays open.
    virtual Task<Result<void>> sendText(std::string text) = 0;

    /// The next whole message of at most `frameLimit` bytes; a longer one is passed over. Fails once the
    /// socket is closed by either side or broken and everything that had arrived until then was taken.
    virtual Task<Result<WebSocketFrame>> receive() = 0;

    /// Resumes at the pong to this ping, or at a `notReadingPong`. Fails when the socket ends first.
    virtual Task<Result<void>> ping() = 0;

    /// Whether this end reads what the other one sends. It holds back while too much waits for `receive`, and
    /// then sees no pong either.
    struct Reading {
        bool isHeldBack = false;
        std::uint64_t pauses = 0; ///< how often it has held back so far
        bool operator==(const Reading&) const = default;
    };

    /// From any thread.
    [[nodiscard]] virtual Reading reading() const = 0;

    /// Requested once the socket is closed by either side or broken: from then on `receive` gives what had
    /// arrived until then. From any thread, also after the socket's life.
    [[nodiscard]] virtual std::stop_token ended() const = 0;

    /// Ends the socket, also while other calls wait: those fail. From any thread, any number of times.
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
