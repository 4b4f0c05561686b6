#pragma once

#include <string>
#include <sys/types.h>

namespace morvex {

/// A shell that is started before its parent enters a private network, and so stays outside.
class Outside {
  public:
    Outside();
    ~Outside();
    Outside(const Outside&) = delete;
    Outside& operator=(const Outside&) = delete;

    /// Whether this command line succeeds there.
    [[nodiscard]] bool succeeds(const std::string& command) const;

  private:
    pid_t shell_ = -1;
    int commands_ = -1;
    int results_ = -1;
};

} // namespace morvex
