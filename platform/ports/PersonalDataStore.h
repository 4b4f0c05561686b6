#pragma once

#include "foundation/Signal.h"
#include "foundation/Task.h"
#include "shared/base/Error.h"

#include <functional>
#include <stop_token>

namespace morvex {

/// Whether the system lets this program use a kind of the user's data. A system need not know all of these.
enum class DataAccess {
    notDetermined, ///< nobody has asked yet
    restricted,    ///< the system does not have the data, or keeps them from everybody
    denied,
    full,
    writeOnly,
    unknown,
};

/// The part that the stores of the user's data have in common. Main thread only.
class PersonalDataStore {
  public:
    virtual ~PersonalDataStore() = default;

    /// What is known now; never blocks.
    [[nodiscard]] virtual DataAccess access() const = 0;

    /// Whether `requestAccess` may open a question to the user. Then it is not called unasked.
    [[nodiscard]] virtual bool asksUser() const { return false; }

    /// Asks the system, and the user where the system does, whatever was said before. `access` tells the
    /// outcome; a failure is one of the asking itself. Fails when `stop` is requested.
    virtual Task<Result<void>> requestAccess(std::stop_token stop) = 0;

    /// Called when the access has changed, or which calendars or lists there are; not for what is in them.
    [[nodiscard]] virtual Connection onChange(std::function<void()> slot) = 0;
};

} // namespace morvex
