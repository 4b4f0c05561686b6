#include "app/mail/MailFeature.h"

#include "app/approvals/Schvalovani.h"
#include "app/companion/ToolGate.h"
#include "app/settings/MacIntegrationSettings.h"
#include "tests/app/mail/MailParts.h"
#include "tests/support/CompanionHarness.h"
#include "tests/support/InstalledMail.h"

#include <algorithm>

namespace morvex {
namespace {

class MailFeatureTest : public CompanionHarness {
  protected:
    /// Makes a Mail with these accounts, as JSON.
    void haveMail(const std::string& accounts) {
        osascript = temporary.path() / "osascript";
        installMail(osascript, programs, accounts);
    }

    MailFeature& mail() { return features->mail; }

    std::string addAccount() { return ended(mail().smtp().ulozit(mailAccount(), "heslo")).value(); }

    bool hasTools() {
        return std::ranges::any_of(companion->toolGate().nabizeneNastroje(), [](const ToolDescriptor& tool) {
            return tool.name.starts_with("mac.mail.");
        });
    }

    [[nodiscard]] std::string trouble() const { return mail_().postaPotiz().value_or(Sentence()).czech(); }

  private:
    [[nodiscard]] const MailFeature& mail_() const { return features->mail; }
};

TEST_F(MailFeatureTest, WithoutTheProgramForScriptsThereIsNoAppleMail) {
    startSecured();
    EXPECT_FALSE(mail().postaDostupna());
    EXPECT_FALSE(mail().hasAppleMail());
    EXPECT_EQ(trouble(), "Apple Mail existuje jen v systému macOS.");
    EXPECT_FALSE(hasTools());
    companion->obnovit();
    executor.runUntilIdle();
    EXPECT_FALSE(takeStatuses().back().mailAvailable);
}

TEST_F(MailFeatureTest, TheStartAsksMailForItsAccounts) {
    haveMail(R"(["Domov"])");
    startSecured();
    EXPECT_TRUE(mail().postaDostupna());
    EXPECT_EQ(trouble(), "");
    EXPECT_TRUE(hasTools());
}

TEST_F(MailFeatureTest, AMailWithoutAccountsCannotBeUsed) {
    haveMail("[]");
    startSecured();
    EXPECT_FALSE(mail().postaDostupna());
    EXPECT_EQ(trouble(), "V Apple Mailu není nastavený žádný účet.");
}

TEST_F(MailFeatureTest, MailCanBeAvailableWithoutAnyMailTool) {
    haveMail(R"(["Domov"])");
    startSecured();
    EXPECT_TRUE(ended(mail().appleAccounts().nastav("Domov", false)).has_value());
    executor.runUntilIdle();
    EXPECT_TRUE(takeStatuses().back().mailAvailable);
    EXPECT_FALSE(hasTools());
    companion->integrations().turnOff(Integration::appleMail);
    executor.runUntilIdle();
    EXPECT_FALSE(takeStatuses().back().mailAvailable);
}

TEST_F(MailFeatureTest, EachChangeOfADirectAccountIsToldToThePhone) {
    startSecured();
    const auto id = addAccount();
    executor.runUntilIdle();
    auto statuses = takeStatuses();
    ASSERT_FALSE(statuses.empty());
    EXPECT_TRUE(statuses.back().mailAvailable);
    EXPECT_TRUE(hasTools());
    companion->integrations().turnOff(Integration::smtp);
    executor.runUntilIdle();
    EXPECT_FALSE(takeStatuses().back().mailAvailable);
    EXPECT_FALSE(hasTools());
    executor.run(mail().smtp().odstranit(id));
    executor.runUntilIdle();
    EXPECT_FALSE(takeStatuses().empty());
}

TEST_F(MailFeatureTest, AMailIsSentAfterAYesOnThisComputer) {
    startSecured();
    addAccount();
    executor.runUntilIdle();
    auto server = tls.layOut();
    for (const auto& line : smtpThatTakesAMail()) server->deliver(line + "\r\n");
    phone.call("mac.mail.send", R"({"to":"jan@example.com","subject":"","body":"x"})", "r");
    executor.runUntilIdle();
    ASSERT_TRUE(companion->schvalovani().zadost().value());
    EXPECT_TRUE(server->sent.empty());
    companion->schvalovani().rozhodnout(true);
    executor.runUntilIdle();
    const auto letter = std::ranges::find_if(
        server->sent, [](const std::string& sent) { return sent.contains("\r\nDate: "); });
    ASSERT_NE(letter, server->sent.end());
    EXPECT_TRUE(letter->contains("Date: Fri, 15 Jan 2027 09:00:00 +0100\r\n")) << "the time of this computer";
}

} // namespace
} // namespace morvex
