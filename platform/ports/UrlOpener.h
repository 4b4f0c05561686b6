#pragma once

#include <string>

namespace morvex {

/// Gives an address to the application that handles its scheme. Main thread only, and it may hold that thread
/// for the moment in which an application is found and started: a person has just asked for it.
class UrlOpener {
  public:
    virtual ~UrlOpener() = default;

    /// `url` is absolute and percent-encoded. False when no application handles its scheme or the one that
    /// does cannot be started; what becomes of the address there is not known.
    virtual bool open(const std::string& url) = 0;
};

} // namespace morvex
