#pragma once

#include "app/mail/MailTools.h"
#include "app/settings/MacIntegrationSettings.h"
#include "shared/wire/Json.h"
#include "tests/app/mail/MailParts.h"
#include "tests/app/mail/bridge/ScriptedMail.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace morvex {

/// The mail tools over a scripted Mail and over servers that are transcripts.
class MailToolsFixture : public testing::Test {
  protected:
    using Names = ScriptedMail::Names;

    MailToolsFixture() {
        tools.addTo(table);
        switchTo(Integration::appleMail, false);
        switchTo(Integration::smtp, false);
    }

    void switchTo(Integration integration, bool on) {
        if (on)
            EXPECT_TRUE(executor.run(integrations.turnOn(integration))->has_value());
        else
            integrations.turnOff(integration);
    }

    /// Mail has these accounts, and its switch is on.
    void haveMail(const Names& names) {
        mail.has(names);
        executor.run(accounts.obnovit());
        switchTo(Integration::appleMail, true);
    }

    /// A direct account of this label, and the switch of these is on.
    std::string haveSmtp(const std::string& label) {
        switchTo(Integration::smtp, true);
        return executor.run(smtp.ulozit(mailAccount(label), "heslo"))->value();
    }

    [[nodiscard]] std::vector<std::string> offered() const {
        std::vector<std::string> names;
        for (const auto& tool : table.offered()) names.push_back(tool.name);
        return names;
    }

    /// The answer of a tool, as JSON; `ok` tells whether it did its work.
    std::string call(const std::string& tool, const boost::json::object& arguments) {
        const auto outcome = *executor.run(table.find(tool)->run({tool, arguments, "r"}));
        ok = outcome.ok;
        return encode(outcome.result);
    }

    /// The parameters of the last script.
    [[nodiscard]] std::string parameters() const {
        const auto& program = mail.programs.programs.back().args.back();
        const auto begin = program.find('{');
        return program.substr(begin, program.find(";\n") - begin);
    }

    ManualExecutor executor;
    MailParts parts{executor};
    MacIntegrationSettings integrations{parts.defaults};
    ScriptedMail mail{executor};
    MacMailAccounts accounts{{parts.defaults, mail.bridge}};
    MacSMTPService smtp{parts.services()};
    MailSources sources{integrations, smtp, accounts, mail.bridge};
    bool isAppleUsable = true;
    std::optional<MailApproval> asked;
    bool approves = true;
    std::function<Task<void>()> whileAsking = []() -> Task<void> { co_return; };
    MailTools tools{sources, [this] { return isAppleUsable; },
                    [this](MailApproval approval) -> Task<bool> {
                        asked = std::move(approval);
                        co_await whileAsking();
                        co_return approves;
                    }};
    ToolTable table;
    bool ok = false;
};

} // namespace morvex
