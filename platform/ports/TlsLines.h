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

/// The server sent more than this program takes.
struct StreamTooLong {
    [[nodiscard]] Sentence popis() const { return "Odpověď serveru je příliš dlouhá."_sentence; }

    bool operator==(const StreamTooLong&) const = default;
};

/// Takes lines and counted bytes from what a server sends. One call at a time. After a failure all later
/// calls fail.
class TlsLines {
  public:
    explicit TlsLines(std::shared_ptr<TlsConnection> connection) : connection_(std::move(connection)) {}

    /// The next line without its end (LF or CRLF). Fails with `StreamEnded`, also after an incomplete line,
    /// with `StreamTooLong` for one of more than `longest` bytes, its end included, and with `NetworkError`.
    Task<Result<std::string>> line(std::size_t longest);

    /// The next bytes, as they arrive: at least one, at most `most`. Fails with `StreamEnded` and with
    /// `NetworkError`.
    Task<Result<std::string>> bytes(std::size_t most);

  private:
    Task<Result<void>> readMore();
    /// Frees what waits: nothing is taken from it any more.
    std::unexpected<Error> failFrom(Error error);
    /// Takes the first `count` waiting bytes.
    std::string take(std::size_t count);

    std::shared_ptr<TlsConnection> connection_;
    std::string waiting_;
    std::optional<Error> failure_;
    std::size_t taken_ = 0; ///< how many bytes of `waiting_` were already taken
};

} // namespace morvex
