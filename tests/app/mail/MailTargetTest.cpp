#include "tests/app/mail/MailToolsFixture.h"

namespace morvex {
namespace {

class MailTargetTest : public MailToolsFixture {
  protected:
    /// "apple:" or "smtp:" and the sender, or the words of the failure.
    [[nodiscard]] std::string target(const std::optional<std::string>& account = {}) const {
        const auto found = resolveMailTarget(sources, account);
        if (!found) return found.error().popis().czech();
        return (std::holds_alternative<MailTarget::Apple>(found->value) ? "apple:" : "smtp:") +
               found->sender();
    }
};

TEST_F(MailTargetTest, ANamedDirectAccountComesFirst) {
    haveMail({"Práce", "Domov"});
    haveSmtp("Práce");
    EXPECT_EQ(target("prace"), "smtp:Práce");
    EXPECT_EQ(target(" Práce\n"), "smtp:Práce");
    EXPECT_EQ(target("DOMOV"), "apple:Domov");
    switchTo(Integration::smtp, false);
    EXPECT_EQ(target("práce"), "apple:Práce");
}

TEST_F(MailTargetTest, AnUnknownNameIsToldByWhateverIsOn) {
    haveMail({"Domov"});
    haveSmtp("Práce");
    EXPECT_EQ(target("X"), "Poštovní účet „X“ není v Morvex povolený.");
    switchTo(Integration::appleMail, false);
    EXPECT_EQ(target("X"), "SMTP účet „X“ není připojený.");
    EXPECT_EQ(target("Domov"), "SMTP účet „Domov“ není připojený.");
    switchTo(Integration::smtp, false);
    EXPECT_EQ(target("Práce"), "SMTP účet „Práce“ není připojený.");
}

TEST_F(MailTargetTest, WithoutANameADirectAccountComesFirst) {
    haveMail({"Domov"});
    EXPECT_EQ(target(), "apple:Domov");
    EXPECT_EQ(target(" "), "apple:Domov");
    haveSmtp("Práce");
    EXPECT_EQ(target(), "smtp:Práce");
    switchTo(Integration::smtp, false);
    EXPECT_EQ(target(), "apple:Domov");
}

TEST_F(MailTargetTest, WithSeveralDirectAccountsAndNoDefaultMailIsAsked) {
    const auto first = haveSmtp("A");
    haveSmtp("B");
    haveSmtp("C");
    executor.run(smtp.odstranit(first));
    EXPECT_EQ(target(), "Vyber výchozí SMTP účet nebo řekni jeho název.");
    haveMail({"Domov"});
    EXPECT_EQ(target(), "apple:Domov");
}

TEST_F(MailTargetTest, TheLastTryLooksAtNoSwitch) {
    haveMail({"Domov"});
    switchTo(Integration::appleMail, false);
    EXPECT_EQ(target(), "apple:Domov");
    EXPECT_EQ(target("Domov"), "SMTP účet „Domov“ není připojený.") << "a name does look at it";
}

TEST_F(MailTargetTest, WithoutAnyAccountOneIsMissing) {
    EXPECT_EQ(target(), "V Morvex není povolený žádný poštovní účet.");
    haveMail({"A", "B"});
    EXPECT_EQ(target(), "Vyber v nastavení Morvex výchozí účet pro odesílání.");
    accounts.nastavVychozi("B");
    EXPECT_EQ(target(), "apple:B");
}

TEST_F(MailTargetTest, TheSenderIsTheLabelOrTheAddress) {
    haveSmtp("");
    EXPECT_EQ(target(), "smtp:eva@example.com");
}

} // namespace
} // namespace morvex
