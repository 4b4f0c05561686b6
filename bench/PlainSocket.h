#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace morvex {

/// One WebSocket of a client whose calls block, for one thread.
class PlainSocket {
  public:
    /// To a server of this computer, from an address of this computer: `127.0.0.<from>`. A failure ends the
    /// program.
    explicit PlainSocket(std::uint16_t port, std::uint8_t from = 1);
    ~PlainSocket();
    PlainSocket(const PlainSocket&) = delete;
    PlainSocket& operator=(const PlainSocket&) = delete;

    void write(std::string_view text);
    /// Nothing when the server has closed.
    std::optional<std::string> read();

  private:
    struct Connection;
    std::unique_ptr<Connection> connection_;
};

} // namespace morvex
