#pragma once

#include "app/mail/protocol/MailServices.h"
#include "platform/ports/TlsLines.h"
#include "shared/base/Error.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>

namespace morvex {

/// One connection to a mail server, over TLS from its first byte on, read and written by lines. Opened once,
/// then used by one call at a time on the executor of its owner. Every failure is a `MacMailProtocolError`
/// and closes it, as `stop` does; a closed connection fails every call.
class MacMailConnection {
  public:
    static constexpr std::size_t longestLine = std::size_t{64} * 1024; ///< bytes, including its end

    MacMailConnection(MailServices services, std::string host, std::uint16_t port, std::stop_token stop);

    ~MacMailConnection() { zavrit(); }

    MacMailConnection(const MacMailConnection&) = delete;
    MacMailConnection& operator=(const MacMailConnection&) = delete;

    /// Connects, within 15 seconds.
    Task<Result<void>> otevrit();

    /// Writes a line and its end, within 15 seconds.
    Task<Result<void>> send(std::string line);

    /// The next line without its end, as UTF-8, within 15 seconds. One of more than `longest` bytes is a
    /// `ProtocolError`.
    Task<Result<std::string>> receive(std::size_t longest = longestLine);

    /// Exactly so many bytes, within 60 seconds and with no pause of 15. The caller bounds `count`.
    Task<Result<std::string>> cist(std::size_t count);

    [[nodiscard]] bool isOpen() const { return lines_.has_value(); }

    void zavrit();

  private:
    using Interrupt = std::stop_callback<std::function<void()>>;

    template <class T> Task<Result<T>> within(Clock::Duration limit, Sentence words, Task<Result<T>> step);
    /// Closes the connection, for a reason that `stop` overrides.
    std::unexpected<Error> failWith(Error reason);

    MailServices services_;
    std::string host_;
    std::uint16_t port_;
    std::stop_token stop_;
    std::shared_ptr<TlsConnection> connection_;
    std::optional<TlsLines> lines_; ///< while the connection is open
    std::optional<Interrupt> interrupt_;
};

} // namespace morvex
