#pragma once

#include "foundation/Task.h"
#include "platform/ports/NetworkError.h"
#include "shared/base/Error.h"

#include <cstdint>
#include <memory>
#include <stop_token>
#include <string>

namespace morvex {

/// An open TLS connection over TCP. At most one `send` and one `receive` at a time. Failures are
/// `NetworkError`. No call has a time limit: a caller that waits too long closes the connection, also from
/// another coroutine.
class TlsConnection {
  public:
    virtual ~TlsConnection() = default;

    /// Ends when the bytes have been handed to the system, so that a slow peer slows the sender.
    virtual Task<Result<void>> send(std::string bytes) = 0;

    /// Returns the bytes that have arrived: at least one, at most 16 KiB. Empty at the end of the stream, no
    /// matter how the peer ended it.
    virtual Task<Result<std::string>> receive() = 0;

    /// Ends the connection; calls that wait fail. From any thread, any number of times.
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
