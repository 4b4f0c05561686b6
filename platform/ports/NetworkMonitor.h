#pragma once

#include <functional>

namespace morvex {

/// Tells that the ways into the network have become others: a cable, another Wi-Fi, an address, a route. It
/// does not know whether any of them leads anywhere. Main thread only.
class NetworkMonitor {
  public:
    virtual ~NetworkMonitor() = default;

    /// One watcher at a time; it outlives the watching. One change of the network may be told a dozen times.
    /// On a system that tells nothing it is never called.
    virtual void watch(std::function<void()> changed) = 0;
    virtual void unwatch() = 0;
};

} // namespace morvex
