#pragma once

#include <cstdint>
#include <memory>

namespace morvex {

/// The baseline for a relay: WebSockets of the same library on one thread, whose frames are not examined.
class PlainServer {
  public:
    enum class Task {
        echo,    ///< returns each frame to its sender
        forward, ///< exchanges the frames of the first two sockets
    };

    explicit PlainServer(Task task);
    ~PlainServer();
    PlainServer(const PlainServer&) = delete;
    PlainServer& operator=(const PlainServer&) = delete;

    [[nodiscard]] std::uint16_t port() const;
    /// Processor time of its thread in milliseconds.
    [[nodiscard]] double processorMilliseconds() const;
    /// Ends all sockets.
    void stop();

  private:
    struct Server;
    std::unique_ptr<Server> server_;
};

} // namespace morvex
