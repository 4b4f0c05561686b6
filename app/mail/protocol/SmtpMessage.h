#pragma once

#include "shared/base/Date.h"

#include <chrono>
#include <string>

namespace morvex {

/// A plain text that is sent by SMTP.
struct SmtpMessage {
    std::string sender; ///< checked by `checkMailAddress`, like `recipient`
    std::string senderName;
    std::string recipient;
    std::string subject;
    std::string body;
    Date date;
    std::chrono::seconds offset{0}; ///< of the clocks from UTC; east is positive

    /// The message as it goes over the wire, without the end of its last line (RFC 5322). No line begins with
    /// a dot.
    [[nodiscard]] std::string text() const;
};

} // namespace morvex
