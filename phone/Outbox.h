#pragma once

#include "foundation/Task.h"
#include "shared/base/Error.h"
#include "shared/wire/MacPayload.h"

#include <string>

namespace morvex {

/// Where what keeps the phone and the Mac in step puts its messages. On the phone's executor.
class Outbox {
  public:
    virtual ~Outbox() = default;

    /// Sends what may get lost. What matters of a failure is whether it is `MessageTooLong`: that never
    /// heals.
    virtual Task<Result<void>> trySend(MacPayload payload, std::string requestID) = 0;

    /// Sends a call whose result shows how far the Mac has got, since it answers in order. Gives the request
    /// id of call and result, an empty one when it could not be sent.
    virtual Task<std::string> sendMilestone() = 0;
};

} // namespace morvex
