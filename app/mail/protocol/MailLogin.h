#pragma once

#include "shared/base/Error.h"

#include <string>

namespace morvex {

/// Who logs in, and where.
struct MailLogin {
    std::string host;
    std::string username; ///< the address of the account
    std::string password; ///< secret

    /// Refuses CR, LF and NUL, which no command can carry, as the failure that the server's refusal would be:
    /// `MacMailProtocolError`.
    [[nodiscard]] Result<void> check() const;
};

} // namespace morvex
