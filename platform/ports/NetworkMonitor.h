#pragma once

#include <functional>

namespace morvex {

/// Reports changes of the network: a cable, another Wi-Fi, an address, a route. It does not know whether
/// anything can be reached. Main thread only.
class NetworkMonitor {
  public:
    virtual ~NetworkMonitor() = default;

    /// Only one watcher at a time; it must outlive the watching. One change of the network may be reported a
    /// dozen times. On a system without such reports `changed` is never called.
    virtual void watch(std::function<void()> changed) = 0;
    virtual void unwatch() = 0;
};

} // namespace morvex
