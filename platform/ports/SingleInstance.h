#pragma once

#include <functional>

namespace morvex {

/// One companion a data folder: two with one identity would push each other off the relay for ever. Main
/// thread only.
class SingleInstance {
  public:
    virtual ~SingleInstance() = default;

    /// True when this process is the one; it stays the one until it ends. False when another process is, or
    /// when the lock cannot be made.
    virtual bool claim() = 0;

    /// Asks the process that is the one to show itself. False when it does not listen.
    virtual bool callOther() = 0;

    /// Listens for others, after a claim that came true.
    virtual void onCall(std::function<void()> called) = 0;
};

} // namespace morvex
