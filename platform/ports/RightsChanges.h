#pragma once

#include "foundation/Task.h"
#include "foundation/Turns.h"
#include "platform/ports/UserDefaults.h"
#include "shared/base/Error.h"

#include <functional>

namespace morvex {

/// Changes of settings that grant others more rights: each takes effect only after it was saved. One at a
/// time, in the order in which they were asked for. Main thread only; the owner ends its tasks before it
/// destroys this object.
class RightsChanges {
  public:
    /// The reference outlives this object.
    explicit RightsChanges(UserDefaults& defaults) : defaults_(defaults) {}

    /// Saves what `values` gives, which is asked anew whenever the settings have changed meanwhile, and then
    /// calls `apply`, before the next change begins. Fails with the cause of the failed save; `apply` is not
    /// called then.
    Task<Result<void>> make(std::function<DefaultsValues()> values, std::function<void()> apply);

  private:
    UserDefaults& defaults_;
    Turns turns_;
};

} // namespace morvex
