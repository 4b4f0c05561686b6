#pragma once

#include "platform/posix/base/FileDescriptor.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <list>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

namespace morvex {

/// Stands between devices and their relay, carries every byte, and now and then does one thing wrong to the
/// connection that carries a certain byte. A thread accepts, one more carries each connection.
class FaultProxy {
  public:
    enum class Fault {
        cut,        ///< both ends are closed
        reset,      ///< both ends are closed by a reset
        halfClosed, ///< one direction ends
        stalled,    ///< nothing passes for a second, then both ends are closed
        sliced,     ///< the next bytes pass one by one
        slowed,     ///< the next bytes pass in small pieces, with a wait behind each
        repeated,   ///< the frame that ends next comes once more
    };
    static constexpr int faults = 7;

    /// `relay` is "http://127.0.0.1:<port>".
    explicit FaultProxy(const std::string& relay);
    ~FaultProxy();
    FaultProxy(const FaultProxy&) = delete;
    FaultProxy& operator=(const FaultProxy&) = delete;

    /// What devices are to take for the relay.
    [[nodiscard]] std::string address() const;

    /// Begins to count anew; the byte behind the first `bytes`, of whatever connection, meets the fault.
    void arm(Fault fault, std::size_t bytes);

    /// Bytes since the last `arm`.
    [[nodiscard]] std::size_t carried() const;
    /// Whether the fault of the last `arm` has happened.
    [[nodiscard]] bool hasStruck() const;

  private:
    class Connection;
    struct Carrier;

    void accept(std::stop_token stop);
    [[nodiscard]] Fault fault() const;
    /// Counts bytes that are about to pass. Gives how many of them pass before the fault: all, mostly.
    std::size_t count(std::size_t bytes);

    FileDescriptor listening_;
    std::uint16_t relayPort_;
    mutable std::mutex mutex_;
    Fault fault_ = Fault::cut;
    std::size_t strikesAt_ = SIZE_MAX;
    std::size_t carried_ = 0;
    std::list<Carrier> carriers_;
    std::jthread acceptor_;
};

} // namespace morvex
