#pragma once

#include "shared/base/Error.h"

#include <string_view>

namespace morvex {

// A reply of SMTP (RFC 5321, section 4.2).

/// Whether another line of the same reply follows this one: its fourth byte is not a blank.
bool continuesSmtpReply(std::string_view line);

/// Whether the last line of a reply has this code. Fails with `MacMailProtocolError`: `Login` for the codes
/// 534 and 535, otherwise `ProtocolError` with the line.
Result<void> checkSmtpReply(std::string_view lastLine, int wanted);

} // namespace morvex
