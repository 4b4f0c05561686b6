#include "app/console/ConsoleShell.h"
#include "tests/app/companion/AgentHarness.h"

namespace morvex {
namespace {

using Lines = std::vector<std::string>;

/// What the console tells and takes of the agents' tasks.
class ConsoleTasksTest : public AgentHarness {
  protected:
    ~ConsoleTasksTest() override {
        shell.reset();
        EXPECT_TRUE(executor.run(scope.join()));
    }

    void startShell() {
        startWithFolder();
        shell = std::make_unique<ConsoleShell>(
            *companion, *features,
            ConsoleShell::Services{clock,
                                   consolePicker,
                                   folders,
                                   scope,
                                   [this](const std::string& text) { lines.push_back(text); },
                                   [] {},
                                   {}});
    }

    Lines type(const std::string& line) {
        lines.clear();
        shell->handle(line);
        executor.runUntilIdle();
        return lines;
    }

    TaskScope scope{executor};
    ConsoleFolderPicker consolePicker;
    Lines lines;
    std::unique_ptr<ConsoleShell> shell;
};

constexpr const char* noSession = "Potíž: Tento úkol ještě nemá relaci, ve které by šlo pokračovat.";

TEST_F(ConsoleTasksTest, AStopTellsWhatIsTrueAtThatMoment) {
    startShell();
    const Lines none{"Žádná úloha neběží."};
    EXPECT_EQ(type("zastav"), none);
    holdDetections();
    begin("mac.codex.run");
    EXPECT_EQ(type("zastav"), Lines{"Zastavuji úlohu."}) << "while it is being prepared";
    finish(15);
    EXPECT_EQ(type("zastav"), none);
    EXPECT_EQ(historie().polozky().front().stav, UkolAgenta::Stav::preruseno);
    begin("mac.codex.run");
    finish();
    EXPECT_EQ(type("zastav"), Lines{"Zastavuji úlohu."}) << "while it runs";
    finish(15);
    EXPECT_EQ(type("zastav"), none);
}

TEST_F(ConsoleTasksTest, AHistoryThatCouldNotBeLoadedIsToldAtTheStartAndInTheStatus) {
    auto file = applicationSupport() / "TalkSpan" / "agent-tasks.json";
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file) << "poškozeno";
    startShell();
    shell->greet("1.0");
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[0], "Morvex 1.0 běží. Příkazy ukáže „pomoc“.");
    EXPECT_TRUE(lines[1].starts_with("Potíž: Historii úkolů se nepodařilo načíst: ")) << lines[1];
    const auto trouble = lines[1];
    EXPECT_EQ(std::ranges::count(type("stav"), trouble), 1);
}

TEST_F(ConsoleTasksTest, TasksThatCouldNotBeForgottenOnDiskAreNotCalledForgotten) {
    startShell();
    complete("s1");
    std::filesystem::remove_all(applicationSupport() / "TalkSpan");
    std::ofstream(applicationSupport() / "TalkSpan") << "v cestě";
    auto told = type("vymazat-historii ano");
    ASSERT_EQ(told.size(), 1U);
    EXPECT_TRUE(told[0].starts_with("Potíž: Historii úkolů se nepodařilo uložit: ")) << told[0];
}

TEST_F(ConsoleTasksTest, TheTroubleOfTheHistoryIsToldWhenItChangesAndBeforeTheTasks) {
    startShell();
    auto task = historie().ukol(begin("mac.codex.run")).value();
    lines.clear();
    historie().otevritRelaci(task);
    historie().otevritRelaci(task);
    EXPECT_EQ(lines, Lines{noSession});
    EXPECT_EQ(type("ulohy"), (Lines{noSession, "Úloha 1: Oprav testy — běží (codex, Projekty)"}));
    finish();
    EXPECT_EQ(type("ulohy").size(), 1U) << "a save that went well ends the trouble";
}

TEST_F(ConsoleTasksTest, NobodyIsToldWhenTheConsoleIsGone) {
    startShell();
    auto task = historie().ukol(begin("mac.codex.run")).value();
    lines.clear();
    shell.reset();
    historie().otevritRelaci(task);
    EXPECT_TRUE(lines.empty());
    finish();
}

TEST_F(ConsoleTasksTest, OpensTheSessionOfATask) {
    startShell();
    complete("s1");
    begin("mac.claude.run");
    EXPECT_EQ(type("pokracovat 2"), Lines{"Otevírám relaci."});
    EXPECT_EQ(opener.opened, Lines{"codex://threads/s1"});
    for (int times = 0; times < 2; ++times) EXPECT_EQ(type("pokracovat 1"), Lines{noSession});
    opener.succeeds = false;
    EXPECT_EQ(type("pokracovat 2"),
              Lines{"Potíž: Relaci se nepodařilo otevřít. Zkontroluj, že je nainstalovaná aplikace Codex."});
    for (const std::string number : {"0", "3", "-1", "2x", "druhá", "99999999999999999999"})
        EXPECT_EQ(type("pokracovat " + number),
                  Lines{"Úloha „" + number + "“ tu není. Čísla ukáže „ulohy“."});
    EXPECT_EQ(type("pokracovat"), Lines{"Správně: pokracovat N"});
    finish();
}

TEST_F(ConsoleTasksTest, ForgetsTheTasksOnlyWhenToldTwice) {
    startShell();
    complete("s1");
    EXPECT_EQ(type("vymazat-historii"), Lines{"Správně: vymazat-historii ano"});
    EXPECT_EQ(type("vymazat-historii ne"), Lines{"Úlohy zůstaly. Zapomene je „vymazat-historii ano“."});
    EXPECT_EQ(historie().polozky().size(), 1U);
    EXPECT_EQ(type("vymazat-historii ano"), Lines{"Úlohy jsou zapomenuté."});
    EXPECT_TRUE(historie().polozky().empty());
}

TEST_F(ConsoleTasksTest, WhatAnAgentOrThePhoneSaysCannotCommandTheTerminal) {
    startShell();
    begin("mac.codex.run", {{"title", "\x1b[2J\u202etseT"}});
    say(R"({"type":"error","message":"\u001b]0;x\u0007 \u009b31m"})");
    finish(1);
    EXPECT_EQ(type("ulohy"),
              Lines{"Úloha 1: \uFFFD[2J\uFFFDtseT — nepovedlo se (codex, Projekty): codex skončil "
                    "chybou: \uFFFD]0;x\uFFFD \uFFFD31m"});
}

} // namespace
} // namespace morvex
