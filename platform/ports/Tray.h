#pragma once

#include <functional>

namespace morvex {

/// Where the desktop shows the items of programs, also of those without a window. At a login it may come
/// after this program; it may go and come back. Main thread only.
class Tray {
  public:
    virtual ~Tray() = default;

    /// Whether it shows items now. False too while that is not known yet.
    [[nodiscard]] virtual bool isThere() const = 0;

    /// One at a time; called whenever it has come.
    virtual void onArrival(std::function<void()> arrived) = 0;
};

} // namespace morvex
