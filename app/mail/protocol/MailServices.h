#pragma once

#include "foundation/Clock.h"
#include "foundation/Executor.h"
#include "platform/ports/LocalTime.h"
#include "platform/ports/TlsClient.h"

namespace morvex {

/// What a conversation with a mail server works with. All of it outlives the conversation.
struct MailServices {
    TlsClient& tls;
    Clock& clock;
    Executor& workers;              ///< long texts are decoded and encoded there
    LocalTime* localTime = nullptr; ///< of the date of sent mail; without it the date is in UTC
};

} // namespace morvex
