#pragma once

#include <string>

namespace morvex {

/// Passes an address to the application that handles its scheme. Main thread only. It may block that thread
/// for a moment while the application is found and started, since the user has just asked for it.
class UrlOpener {
  public:
    virtual ~UrlOpener() = default;

    /// `url` is absolute and percent-encoded. Returns false when no application handles its scheme or that
    /// application cannot be started; what it does with the address is not known.
    virtual bool open(const std::string& url) = 0;
};

} // namespace morvex
