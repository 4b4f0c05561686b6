#pragma once

#include <sys/fsuid.h>

namespace morvex {

/// While it lives, file permissions apply to this thread even if a superuser runs the tests. Other threads
/// keep their rights.
class PlainUser {
  public:
    PlainUser() : before_(::setfsuid(nobody)) {}

    ~PlainUser() { ::setfsuid(static_cast<uid_t>(before_)); }

    PlainUser(const PlainUser&) = delete;
    PlainUser& operator=(const PlainUser&) = delete;

  private:
    static constexpr uid_t nobody = 65534;
    int before_;
};

} // namespace morvex
