#pragma once

#include "app/mail/MacSMTPService.h"
#include "app/mail/bridge/MacMailAccounts.h"
#include "app/settings/MacIntegrationSettings.h"
#include "shared/base/Error.h"

#include <optional>
#include <string>
#include <variant>

namespace morvex {

/// What mail can be read and sent with. All of it outlives whoever holds this.
struct MailSources {
    MacIntegrationSettings& integrations;
    MacSMTPService& smtp;
    MacMailAccounts& accounts; ///< of Apple Mail
    MailBridge& bridge;
};

/// The account that a mail tool works with.
struct MailTarget {
    struct Apple {
        std::string account; ///< its name in Apple Mail
        bool operator==(const Apple&) const = default;
    };

    using Smtp = MacSMTPAccount;

    std::variant<Apple, Smtp> value;

    /// The name that the user is told.
    [[nodiscard]] const std::string& sender() const;

    bool operator==(const MailTarget&) const = default;
};

/// The account of this name, or without one the account that is meant then. Blanks around the name do not
/// count. Fails with `MacSMTPServiceError` or `MacMailAccounts::Error`.
Result<MailTarget> resolveMailTarget(const MailSources& sources, const std::optional<std::string>& account);

} // namespace morvex
