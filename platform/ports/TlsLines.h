#pragma once

#include "platform/ports/TlsClient.h"

#include <cstddef>
#include <memory>
#include <string>

namespace morvex {

/// The other end has ended the connection before what was awaited had come.
struct StreamEnded {
    [[nodiscard]] Sentence popis() const { return "Server spojení ukončil."_sentence; }

    bool operator==(const StreamEnded&) const = default;
};

/// Takes lines and counted bytes from what a server sends. One call at a time. After a failure all later
/// calls fail.
class TlsLines {
  public:
    struct Limits {
        std::size_t line = std::size_t{64} * 1024;         ///< bytes of a line, its end included
        std::size_t bytes = std::size_t{16} * 1024 * 1024; ///< of one call of `bytes`
    };

    TlsLines(std::shared_ptr<TlsConnection> connection, Limits limits)
        : connection_(std::move(connection)), limits_(limits) {}

    /// The next line without its end, LF or CRLF. Fails with `StreamEnded`, also behind a part of a line, and
    /// with `NetworkError` when it is too long.
    Task<Result<std::string>> line();

    /// Exactly so many of the next bytes. Fails as `line`, and at once when they are too many.
    Task<Result<std::string>> bytes(std::size_t count);

  private:
    Task<Result<void>> readMore();
    /// The first `count` bytes that wait.
    std::string take(std::size_t count);

    std::shared_ptr<TlsConnection> connection_;
    Limits limits_;
    std::string waiting_;
    std::size_t taken_ = 0; ///< so many of the bytes that wait were given out
};

} // namespace morvex
