#pragma once

#include "foundation/Signal.h"

#include <functional>

namespace morvex {

/// Reports changes of the network: a cable, another Wi-Fi, an address, a route. It does not know whether
/// anything can be reached. Main thread only.
class NetworkMonitor {
  public:
    virtual ~NetworkMonitor() = default;

    /// `slot` is called as long as the connection lives. One change of the network may be reported a dozen
    /// times. On a system without such reports `slot` is never called.
    [[nodiscard]] virtual Connection onChange(std::function<void()> slot) = 0;
};

} // namespace morvex
