#pragma once

namespace morvex {

/// One companion a data folder: two with one identity would push each other off the relay for ever.
class SingleInstance {
  public:
    virtual ~SingleInstance() = default;

    /// True when this process is the one; it stays the one until it ends. False when another process is, or
    /// when the lock cannot be made.
    virtual bool claim() = 0;
};

} // namespace morvex
