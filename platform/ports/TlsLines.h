#pragma once

#include "platform/ports/TlsClient.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>

namespace morvex {

/// The server closed the connection before the expected data arrived.
struct StreamEnded {
    [[nodiscard]] Sentence popis() const { return "Server spojení ukončil."_sentence; }

    bool operator==(const StreamEnded&) const = default;
};

/// Takes lines and counted bytes from what a server sends. One call at a time. After a failure all later
/// calls fail.
class TlsLines {
  public:
    struct Limits {
        std::size_t line = std::size_t{64} * 1024;         ///< bytes of a line, including its end
        std::size_t bytes = std::size_t{16} * 1024 * 1024; ///< bytes of one call of `bytes`
    };

    TlsLines(std::shared_ptr<TlsConnection> connection, Limits limits)
        : connection_(std::move(connection)), limits_(limits) {}

    /// The next line without its end (LF or CRLF). Fails with `StreamEnded`, also after an incomplete line,
    /// and with `NetworkError` when the line is too long.
    Task<Result<std::string>> line();

    /// Exactly the next `count` bytes. Fails like `line`, and at once when `count` is above the limit.
    Task<Result<std::string>> bytes(std::size_t count);

  private:
    Task<Result<void>> readMore();
    /// Frees what waits: nothing is taken from it any more.
    std::unexpected<Error> failFrom(Error error);
    /// Takes the first `count` waiting bytes.
    std::string take(std::size_t count);

    std::shared_ptr<TlsConnection> connection_;
    Limits limits_;
    std::string waiting_;
    std::optional<Error> failure_;
    std::size_t taken_ = 0; ///< how many bytes of `waiting_` were already taken
};

} // namespace morvex
