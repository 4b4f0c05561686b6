#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace morvex {

/// One WebSocket of a client whose calls block, for one thread.
class PlainSocket {
  public:
    enum class Security { none, tls };

    /// To a server of this computer, whoever it says it is, from an address of this computer:
    /// `127.0.0.<from>`. A failure ends the program.
    explicit PlainSocket(std::uint16_t port, std::uint8_t from = 1, Security security = Security::none);
    ~PlainSocket();
    PlainSocket(const PlainSocket&) = delete;
    PlainSocket& operator=(const PlainSocket&) = delete;

    void write(std::string_view text);
    /// Nothing when the server has closed.
    std::optional<std::string> read();

    /// Answers the pings of the server from now on, while `idle` runs, and drops what comes besides.
    void listen();
    /// The time of all sockets that listen.
    static void idle(std::chrono::milliseconds time);
    /// Those that were answered.
    [[nodiscard]] std::size_t pings() const;

  private:
    struct Connection;
    template <class Stream> struct ConnectionOver;
    std::unique_ptr<Connection> connection_;
};

} // namespace morvex
