#include "tests/app/console/ConsoleFixture.h"

#include <algorithm>
#include <vector>

namespace morvex {
namespace {

using Lines = std::vector<std::string>;

class ConsoleMailTest : public ConsoleFixture {
  protected:
    using Typing = ConsoleQuestions::Typing;

    MacSMTPService& smtp() { return features->mail.smtp(); }

    /// What was printed after the last of these answers.
    Lines add(const std::vector<std::string>& answers) {
        type("ucet-pridat");
        Lines last;
        for (const auto& answer : answers) last = type(answer);
        return last;
    }

    Lines addWork() { return add({"Práce", "eva@example.com", "Eva", "imap.a", "smtp.a", "tajne"}); }

    void serveALogin() { tls.layOut()->deliver("* OK\r\nA0001 OK\r\nA0002 OK\r\n"); }
};

TEST_F(ConsoleMailTest, AnAccountIsAddedLineByLineAndChecked) {
    startShell();
    serveALogin();
    EXPECT_EQ(type("ucet-pridat"), Lines{"Název účtu? Prázdný řádek přidávání zruší."});
    EXPECT_EQ(type(" Práce "), Lines{"E-mailová adresa?"});
    EXPECT_EQ(type("eva@example.com"), Lines{"Jméno odesílatele? Není povinné."});
    EXPECT_EQ(type(""), Lines{"IMAP server? Používá se port 993 se šifrováním TLS."});
    EXPECT_EQ(type("imap.a"), Lines{"SMTP server? Používá se port 465 se šifrováním TLS."});
    EXPECT_TRUE(typings.empty());
    EXPECT_EQ(type("smtp.a"), Lines{"Heslo nebo heslo pro aplikaci?"});
    EXPECT_EQ(typings, std::vector{Typing::hidden}) << "the password is not seen";
    EXPECT_EQ(linesBeforeTyping, Lines{}) << "not even by who answers as soon as the question is there";
    EXPECT_EQ(type("tajne"), (Lines{"Přidáno: Práce", "Ověřeno"}));
    EXPECT_EQ(typings, (std::vector{Typing::hidden, Typing::shown}));
    EXPECT_TRUE(hasLine(type("ucty"), "Účet: Práce, eva@example.com, imap.a, smtp.a, výchozí, ověřený"));
}

TEST_F(ConsoleMailTest, AnEmptyAnswerGivesUpOrIsOne) {
    startShell();
    for (const auto& answers : {std::vector<std::string>{""}, {"Práce", ""}, {"Práce", "a@b.cz", "", ""}}) {
        EXPECT_EQ(add(answers), Lines{"Nic jsem nepřidal."});
        EXPECT_TRUE(hasLine(type("ucty"), "Zatím není připojený žádný SMTP účet. Přidá ho „ucet-pridat“."));
    }
    add({"Práce", "eva@example.com", "", "imap.a", "smtp.a", ""});
    EXPECT_EQ(smtp().accounts().size(), 1U) << "a password may follow later";
}

TEST_F(ConsoleMailTest, AFailedLoginIsTold) {
    startShell();
    EXPECT_EQ(addWork(),
              (Lines{"Přidáno: Práce", "Potíž: Spojení s poštovním serverem selhalo: spojení odmítnuto"}));
    EXPECT_EQ(type("ucet-overit prace"),
              Lines{"Potíž: Spojení s poštovním serverem selhalo: spojení odmítnuto"});
    serveALogin();
    EXPECT_EQ(type("ucet-overit PRÁCE"), Lines{"Ověřeno"});
}

TEST_F(ConsoleMailTest, AnAccountIsMadeTheDefaultAndRemoved) {
    startShell();
    addWork();
    add({"Doma", "eva@doma.example", "", "imap.b", "smtp.b", "x"});
    EXPECT_EQ(type("ucet-vychozi doma"), Lines{"Výchozí účet pro odesílání: Doma"});
    EXPECT_EQ(smtp().defaultAccountID(), smtp().accounts()[1].id);
    EXPECT_EQ(type("ucet-odebrat eva@example.com"), Lines{"Odebráno: Práce"});
    EXPECT_EQ(smtp().accounts().size(), 1U);
    for (const char* command : {"ucet-overit", "ucet-vychozi", "ucet-odebrat"})
        EXPECT_EQ(type(std::string(command) + " Práce"), Lines{"Potíž: SMTP účet „Práce“ není připojený."});
}

TEST_F(ConsoleMailTest, TheListTellsThatThereIsNoAppleMailHere) {
    startShell();
    EXPECT_TRUE(hasLine(type("ucty"), "Potíž: Apple Mail existuje jen v systému macOS."));
}

} // namespace
} // namespace morvex
