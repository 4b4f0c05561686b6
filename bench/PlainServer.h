#pragma once

#include <cstdint>
#include <memory>

namespace morvex {

/// What a relay is measured against: WebSockets of the same library on one thread, whose frames are not
/// looked at.
class PlainServer {
  public:
    enum class Task {
        echo,    ///< a frame goes back to where it came from
        forward, ///< the first two sockets get each other's frames
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
