#include "tests/support/InstalledMail.h"
#include "tests/support/UiHarness.h"

#include <algorithm>

namespace morvex {
namespace {

class MailViewTest : public UiHarness {
  protected:
    /// Lets Mail have these accounts, as JSON.
    void haveMail(const std::string& accounts) {
        osascript = temporary.path() / "osascript";
        installMail(osascript, programs, accounts);
    }

    MacSMTPService& smtp() { return features->mail.smtp(); }

    void fillEditor() {
        type("Název účtu", "Práce");
        type("E-mailová adresa", "eva@example.com");
        type("Jméno odesílatele", "Eva");
        type("IMAP server", "imap.example.com");
        type("SMTP server", "smtp.example.com");
        type("Heslo nebo heslo pro aplikaci", "tajne");
    }
};

TEST_F(MailViewTest, ADirectAccountIsAddedCheckedEditedAndRemoved) {
    startSecured();
    openUi();
    EXPECT_TRUE(reads("0 účtů"));
    press("Spravovat: SMTP / IMAP");
    EXPECT_TRUE(reads("Zatím není připojený žádný SMTP účet."));
    press("Přidat účet");
    EXPECT_TRUE(
        reads("Stejné údaje jako v iPhone aplikaci. IMAP používá port 993 a SMTP port 465 se šifrováním "
              "TLS."));
    EXPECT_TRUE(mentions("Outlook"));
    fillEditor();
    const auto server = tls.layOut();
    press("Uložit a ověřit");
    ASSERT_EQ(smtp().accounts().size(), 1U);
    const auto& account = smtp().accounts().front();
    EXPECT_EQ(account, (MacSMTPAccount{account.id, "Práce", "eva@example.com", "Eva", "imap.example.com",
                                       "smtp.example.com"}));
    EXPECT_TRUE(reads("Ověřuji…")) << "the list is there again";
    server->deliver("* OK\r\nA0001 OK\r\nA0002 OK\r\n");
    settle();
    EXPECT_TRUE(reads("Ověřeno"));
    EXPECT_TRUE(reads("1 účtů"));
    press("Upravit: Práce");
    EXPECT_EQ(typedInto("SMTP server"), "smtp.example.com");
    EXPECT_EQ(typedInto("Heslo nebo heslo pro aplikaci"), "") << "the kept one is not shown";
    type("Název účtu", "Doma");
    press("Uložit");
    EXPECT_EQ(smtp().accounts().front().label, "Doma");
    EXPECT_FALSE(reads("Ověřeno")) << "it may be another one now";
    press("Upravit: Doma");
    press("Odstranit účet");
    EXPECT_TRUE(reads("Odstranit účet „Doma“?"));
    EXPECT_EQ(smtp().accounts().size(), 1U);
    press("Odstranit účet");
    EXPECT_TRUE(smtp().accounts().empty());
    EXPECT_TRUE(reads("Zatím není připojený žádný SMTP účet."));
}

TEST_F(MailViewTest, AnEditorThatIsCancelledGoesBackToTheList) {
    startSecured();
    openUi();
    press("Spravovat: SMTP / IMAP");
    press("Přidat účet");
    press("Zrušit");
    EXPECT_TRUE(reads("Zatím není připojený žádný SMTP účet."));
}

TEST_F(MailViewTest, ARefusedPasswordStaysInTheEditorWithItsReason) {
    startSecured();
    openUi();
    press("Spravovat: SMTP / IMAP");
    press("Přidat účet");
    fillEditor();
    vault.refusals["add smtp.password.00000000-0000-4000-8000-000000000001"] = -25308;
    for (int number = 1; number < 40; ++number) {
        auto text = std::to_string(number);
        text.insert(0, 12 - text.size(), '0');
        vault.refusals["add smtp.password.00000000-0000-4000-8000-" + text] = -25308;
    }
    press("Uložit");
    EXPECT_TRUE(smtp().accounts().empty());
    EXPECT_TRUE(mentions("-25308"));
    EXPECT_EQ(typedInto("Název účtu"), "Práce");
}

TEST_F(MailViewTest, ALoginThatFailsIsToldInTheRowAndTriedAgain) {
    startSecured();
    openUi();
    EXPECT_TRUE(ended(smtp().ulozit({"", "Práce", "eva@example.com", "", "imap.a", "smtp.a"}, "x")));
    settle();
    press("Spravovat: SMTP / IMAP");
    press("Ověřit: Práce");
    EXPECT_TRUE(reads("Spojení s poštovním serverem selhalo: spojení odmítnuto"));
    const auto server = tls.layOut();
    server->deliver("* OK\r\nA0001 OK\r\nA0002 OK\r\n");
    press("Ověřit: Práce");
    EXPECT_TRUE(reads("Ověřeno"));
}

TEST_F(MailViewTest, OneOfSeveralAccountsIsTheDefault) {
    startSecured();
    openUi();
    for (const char* label : {"A", "B"})
        EXPECT_TRUE(ended(smtp().ulozit({"", label, "eva@example.com", "", "imap.a", "smtp.a"}, "")));
    settle();
    press("Spravovat: SMTP / IMAP");
    EXPECT_EQ(std::ranges::count(usableControls(), "Nastavit jako výchozí: A"), 0);
    press("Nastavit jako výchozí: B");
    EXPECT_EQ(smtp().defaultAccountID(), smtp().accounts()[1].id);
    EXPECT_EQ(std::ranges::count(usableControls(), "Nastavit jako výchozí: A"), 1);
}

TEST_F(MailViewTest, AnIncompleteAccountSaysWhatIsMissing) {
    startSecured();
    openUi();
    EXPECT_TRUE(ended(smtp().ulozit({"", "A", "", "", "", ""}, "")));
    settle();
    press("Spravovat: SMTP / IMAP");
    EXPECT_TRUE(reads("Chybí adresa nebo server."));
}

TEST_F(MailViewTest, WithoutMailItsRowCannotBeSwitchedAndSaysWhy) {
    startSecured();
    openUi();
    EXPECT_TRUE(reads("Apple Mail existuje jen v systému macOS."));
    EXPECT_FALSE(isOn("Apple Mail"));
    EXPECT_EQ(std::ranges::count(usableControls(), "Spravovat: Apple Mail"), 0);
}

TEST_F(MailViewTest, AccountsOfMailAreAllowedOneByOne) {
    haveMail(R"(["Domov","Práce"])");
    startSecured();
    openUi();
    EXPECT_TRUE(reads("2 účtů vybráno"));
    press("Spravovat: Apple Mail");
    EXPECT_TRUE(reads("Morvex zde vidí jen účty přidané přímo do Apple Mailu."));
    EXPECT_TRUE(isOn("Domov"));
    press("Domov");
    EXPECT_FALSE(isOn("Domov"));
    EXPECT_EQ(features->mail.appleAccounts().povolene(), std::vector<std::string>{"Práce"});
    press("Domov");
    EXPECT_TRUE(isOn("Domov"));
}

TEST_F(MailViewTest, AMailWithoutAccountsSaysSo) {
    haveMail("[]");
    startSecured();
    openUi();
    press("Spravovat: Apple Mail");
    EXPECT_TRUE(reads("V Apple Mailu není nastavený žádný účet."));
}

} // namespace
} // namespace morvex
