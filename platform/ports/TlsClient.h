#pragma once

#include "foundation/Task.h"
#include "platform/ports/NetworkError.h"
#include "shared/base/Error.h"

#include <cstdint>
#include <memory>
#include <stop_token>
#include <string>

namespace morvex {

/// An open TLS connection over TCP. One `send` and one `receive` at a time. Failures are `NetworkError`.
/// Nothing here has a time limit: whoever waits too long closes it, also from another coroutine.
class TlsConnection {
  public:
    virtual ~TlsConnection() = default;

    /// Ends when the bytes have been handed to the system, so that a slow peer slows the sender.
    virtual Task<Result<void>> send(std::string bytes) = 0;

    /// What has arrived: at least one byte, at most 16 KiB. Empty at the end of the stream, however the peer
    /// has ended it.
    virtual Task<Result<std::string>> receive() = 0;

    /// Ends the connection, also while other calls wait: those fail. From any thread, any number of times.
    virtual void close() = 0;
};

class TlsClient {
  public:
    virtual ~TlsClient() = default;

    /// Connects to a host, a name or an address (its certificate is verified, TLS 1.2 or newer). Fails with
    /// `NetworkError`: after 60 seconds at the latest, and at once when `stop` is requested.
    virtual Task<Result<std::shared_ptr<TlsConnection>>> connect(std::string host, std::uint16_t port,
                                                                 std::stop_token stop) = 0;
};

} // namespace morvex
