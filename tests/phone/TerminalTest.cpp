#include "phone/Terminal.h"

#include <gtest/gtest.h>

#include <sstream>

namespace morvex {
namespace {

TEST(Terminal, ResultsAndNotesGoTheirOwnWays) {
    std::ostringstream out;
    std::ostringstream err;
    Terminal terminal({out}, {err});
    terminal.print({{"výsledek", Style::strong}});
    terminal.note("cestou");
    terminal.problem("potíž");
    terminal.prompt("otázka? ");
    EXPECT_EQ(out.str(), "výsledek\n");
    EXPECT_EQ(err.str(), "cestou\nmorvex-phone: potíž\notázka? ");
}

TEST(Terminal, WhatComesBeforeTheAnswerStartsALineOfItsOwn) {
    std::ostringstream out;
    Terminal terminal({out}, {out});
    terminal.prompt("> ");
    terminal.note("něco přišlo");
    EXPECT_FALSE(terminal.isPrompting());
    terminal.prompt("> ");
    terminal.answered();
    terminal.print({{"odpověď"}});
    terminal.prompt("> ");
    terminal.leavePrompt();
    terminal.leavePrompt();
    EXPECT_EQ(out.str(), "> \nněco přišlo\n> odpověď\n> \n");
}

TEST(Terminal, ColoursOnlyWhereColoursAreWanted) {
    std::ostringstream out;
    Terminal terminal({out, true, true}, {out});
    terminal.print({{"ne", Style::bad}, {" a "}, {"ano\x1b", Style::good}});
    EXPECT_EQ(out.str(), "\x1b[31mne\x1b[0m a \x1b[32mano\uFFFD\x1b[0m\n");
}

TEST(Terminal, JsonStaysExactUnlessAPersonLooksAtIt) {
    std::ostringstream piped;
    std::ostringstream shown;
    Terminal({piped}, {piped}).printJson("\"\x7f\"");
    Terminal({shown, true}, {shown}).printJson("\"\x7f\"");
    EXPECT_EQ(piped.str(), "\"\x7f\"\n");
    EXPECT_EQ(shown.str(), "\"\uFFFD\"\n");
}

TEST(Terminal, KnowsThatItsReaderWentAway) {
    std::ostringstream out;
    Terminal terminal({out}, {out});
    EXPECT_TRUE(terminal.isOpen());
    out.setstate(std::ios::badbit);
    EXPECT_FALSE(terminal.isOpen());
}

} // namespace
} // namespace morvex
