#pragma once

#include "app/mail/MacSMTPService.h"
#include "platform/memory/ManualClock.h"
#include "platform/memory/ManualExecutor.h"
#include "platform/memory/MemoryDefaults.h"
#include "platform/memory/MemoryVault.h"
#include "platform/memory/ScriptedRandom.h"
#include "platform/memory/ScriptedTls.h"

#include <memory>
#include <string>
#include <vector>

namespace morvex {

/// What the service of direct accounts works with; the servers are transcripts.
class MailParts {
  public:
    explicit MailParts(ManualExecutor& executor) : keychain(vault, executor), executor_(executor) {}

    MacSMTPService::Services services() { return services(defaults); }

    MacSMTPService::Services services(UserDefaults& other) {
        return {other, keychain, random, {tls, clock, executor_}, {}};
    }

    /// A server that answers the next connection with these lines, whatever it is asked.
    std::shared_ptr<ScriptedTlsConnection> serve(const std::vector<std::string>& lines) {
        auto connection = tls.layOut();
        for (const auto& line : lines) connection->deliver(line + "\r\n");
        return connection;
    }

    ManualClock clock;
    MemoryDefaults defaults;
    MemoryVault vault;
    ScriptedRandom random;
    ScriptedTls tls;
    Keychain keychain;

  private:
    ManualExecutor& executor_;
};

/// A complete account.
inline MacSMTPAccount mailAccount(const std::string& label = "Práce",
                                  const std::string& address = "eva@example.com") {
    return {"", label, address, "Eva Malá", "imap.example.com", "smtp.example.com"};
}

/// The lines of an IMAP server up to the reply to SELECT.
inline std::vector<std::string> imapUntilSelected() {
    return {"* OK ready", "A0001 OK in", "* 3 EXISTS", "A0002 OK selected"};
}

/// The lines of an SMTP server that takes one mail.
inline std::vector<std::string> smtpThatTakesAMail() {
    return {"220 hi",  "250-a",   "250 b",     "334 VXNlcm5hbWU6", "334 UGFzc3dvcmQ6", "235 in",
            "250 yes", "250 yes", "354 go on", "250 taken",        "221 bye"};
}

} // namespace morvex
