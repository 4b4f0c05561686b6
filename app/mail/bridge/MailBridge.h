#pragma once

#include "app/mail/bridge/MailChyba.h"
#include "app/mail/bridge/MailZprava.h"
#include "app/mail/bridge/ScriptRun.h"
#include "foundation/Clock.h"
#include "foundation/Task.h"
#include "platform/ports/ProcessLauncher.h"

#include <boost/json/object.hpp>

#include <cstdint>
#include <stop_token>
#include <string>
#include <vector>

namespace morvex {

/// Drives the Mail application by scripts, a program of the system for each operation. It has no state, and
/// calls may overlap. It is there where the program is; elsewhere every operation fails with
/// `Chyba::OnlyOnMac` and starts nothing. The owner keeps this object alive while an operation runs.
///
/// An operation fails with `Chyba`, with the error of a failed launch, or with `TalkSpanError::Cancelled` if
/// `stop` was requested before the launch; afterwards `stop` ends the script, which then counts as failed.
/// None is tried again. A script has `timeLimit`.
class MailBridge {
  public:
    using Zprava = MailZprava;
    using Chyba = MailChyba;

    struct Services {
        ProcessLauncher& launcher;
        Clock& clock;
        Executor& workers;       ///< the disk is asked and long output is read there
        Environment environment; ///< this program's own
        std::string osascript = "/usr/bin/osascript";
    };

    static constexpr std::chrono::seconds timeLimit{45};

    explicit MailBridge(Services services) : services_(std::move(services)) {}

    /// Whether the program that runs scripts is an executable file. Asks the disk; from any thread.
    [[nodiscard]] bool isAvailable() const;

    /// Messages of the inbox of an account, or of all accounts where `ucet` is empty; at most `limit`. Where
    /// `hledat` is not empty, those whose subject or sender contains it, without regard to case and
    /// diacritics.
    Task<Result<std::vector<Zprava>>> zpravy(std::string hledat, std::string ucet, bool jenNeprectene,
                                             std::int64_t limit, std::stop_token stop = {});

    /// The text of a message in any mailbox of these accounts. An empty list means every account that Mail
    /// has, so whoever asks for a user who has allowed none must not come here.
    Task<Result<std::string>> obsah(std::string id, std::vector<std::string> ucty, std::stop_token stop = {});

    /// Sends a message from the first address of the account; where `ucet` is empty, from where Mail likes.
    /// Returns what was done, for the user.
    Task<Result<std::string>> odeslat(std::string ucet, std::string komu, std::string predmet,
                                      std::string telo, std::stop_token stop = {});

    /// Like `odeslat`, but leaves the message open on the screen and does not send it.
    Task<Result<std::string>> koncept(std::string ucet, std::string komu, std::string predmet,
                                      std::string telo, std::stop_token stop = {});

    /// Runs a script of `mailScripts` and reads its result, of a type that `scriptRun::result` knows.
    template <class T>
    Task<Result<T>> spustitSkript(std::string telo, boost::json::object parametry, Clock::Duration limit,
                                  std::stop_token stop = {}) {
        auto output = co_await outputOf(scriptRun::program(telo, parametry), limit, std::move(stop));
        if (!output) co_return std::unexpected(std::move(output).error());
        co_return co_await runOn(services_.workers, [&output] { return scriptRun::result<T>(*output); });
    }

  private:
    Task<Result<std::string>> outputOf(std::string program, Clock::Duration limit, std::stop_token stop);

    Services services_;
};

} // namespace morvex
