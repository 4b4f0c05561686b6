#pragma once

#include "foundation/Signal.h"

#include <functional>

namespace morvex {

/// The area of the desktop that shows the items of programs, also of those without a window. After a login it
/// may appear later than this program; it may disappear and come back. Main thread only.
class Tray {
  public:
    virtual ~Tray() = default;

    /// Whether it shows items now. False too while that is not known yet.
    [[nodiscard]] virtual bool isThere() const = 0;

    /// `slot` is called each time the tray appears, as long as the connection lives.
    [[nodiscard]] virtual Connection onArrival(std::function<void()> slot) = 0;
};

} // namespace morvex
