#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace morvex {

/// A client's WebSocket with blocking calls, for one thread.
class PlainSocket {
  public:
    enum class Security { none, tls };

    /// Connects to a server on this computer, without verifying it, from the address `127.0.0.<from>` of this
    /// computer. A failure ends the program.
    explicit PlainSocket(std::uint16_t port, std::uint8_t from = 1, Security security = Security::none);
    ~PlainSocket();
    PlainSocket(const PlainSocket&) = delete;
    PlainSocket& operator=(const PlainSocket&) = delete;

    void write(std::string_view text);
    /// Returns nothing if the server has closed.
    std::optional<std::string> read();

    /// From now on, while `idle` runs, answers the server's pings and drops everything else.
    void listen();
    /// Runs all listening sockets for this time.
    static void idle(std::chrono::milliseconds time);
    /// Number of answered pings.
    [[nodiscard]] std::size_t pings() const;

  private:
    struct Connection;
    template <class Stream> struct ConnectionOver;
    std::unique_ptr<Connection> connection_;
};

} // namespace morvex
