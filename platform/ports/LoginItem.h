#pragma once

#include "shared/base/Error.h"

namespace morvex {

/// Whether this program starts when its user logs in. Main thread only.
class LoginItem {
  public:
    virtual ~LoginItem() = default;

    /// The current setting, even if something else changed it.
    [[nodiscard]] virtual bool isEnabled() const = 0;

    virtual Result<void> enroll() = 0;
    virtual Result<void> withdraw() = 0;
};

} // namespace morvex
