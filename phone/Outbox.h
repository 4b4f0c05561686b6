#pragma once

#include "foundation/Task.h"
#include "shared/base/Error.h"
#include "shared/wire/MacPayload.h"

#include <string>

namespace morvex {

/// How the record and settings synchronisation sends messages to the Mac. On the phone's executor.
class Outbox {
  public:
    virtual ~Outbox() = default;

    /// Sends a message that may get lost. The caller only needs to know whether the failure is
    /// `MessageTooLong`, since retrying cannot help then.
    virtual Task<Result<void>> trySend(MacPayload payload, std::string requestID) = 0;

    /// Sends a call whose result shows how far the Mac has got, since the Mac answers in order. Returns the
    /// request id of call and result, or an empty one when the call could not be sent.
    virtual Task<std::string> sendMilestone() = 0;
};

} // namespace morvex
