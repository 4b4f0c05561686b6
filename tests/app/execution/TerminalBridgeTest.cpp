#include "app/execution/TerminalBridge.h"

#include "app/execution/SouboryChyba.h"
#include "foundation/OneShot.h"
#include "foundation/Text.h"
#include "foundation/ThreadExecutor.h"
#include "shared/base/SystemError.h"
#include "tests/app/execution/TerminalFixture.h"
#include "tests/app/execution/TerminalTable.h"
#include "tests/support/Await.h"

#include MORVEX_BASICS

#include <cerrno>
#include <fstream>
#include <functional>
#include <map>
#include <sstream>

namespace morvex {
namespace {

using namespace std::chrono_literals;
using Chyba = TerminalBridge::Chyba;

class TerminalBridgeTest : public TerminalFixture {};

/// The sentences, by the verdicts of the table.
std::string sentence(const TerminalRow& row) {
    const std::map<std::string, std::function<std::string(const std::string&)>> sentences = {
        {"runs", [](const auto&) { return ""; }},
        {"program",
         [](const auto& name) {
             return "Program " + name + " spustit neumím. Povolené jsou jen ty, které nic nemění.";
         }},
        {"confirm",
         [](const auto& command) {
             return command + " vyžaduje tvoje potvrzení. Schvalování zatím neumím — udělej to na Macu sám.";
         }},
        {"exec",
         [](const auto& argument) {
             return "Ten příkaz nespustím: obsahuje " + argument + ", což umí spustit cokoli dalšího";
         }},
        {"helper", [](const auto& argument) { return "Ten příkaz nespustím: obsahuje " + argument; }},
        {"outside",
         [](const auto& name) { return "Cesta " + name + " leží mimo povolené složky. Nesahám na ni."; }},
        {"credentials",
         [](const auto& fragment) {
             return "Na " + fragment + " nesahám za žádných okolností — jsou to přihlašovací údaje.";
         }},
        {"nofile", [](const auto& name) { return name + " není soubor."; }},
    };
    return sentences.at(row.verdict)(row.detail);
}

TEST_F(TerminalBridgeTest, EveryCommandOfTheTableGetsItsVerdict) {
    tree.file("home/Projects/a", "");
    tree.file("home/Projects/.ssh/key", "");
    tree.file("outside/a", "");
    tree.file("home/ProjectsOld/a", "");
    tree.link("home/Projects/out", tree.path("outside"));
    tree.link("home/Projects/key", ".ssh/key");
    auto rows = readTerminalTable(tree.path(""));
    EXPECT_GE(rows.size(), 300U);
    for (const auto& row : rows) {
        std::vector<std::string> args(row.command.begin() + 1, row.command.end());
        EXPECT_EQ(refusal(row.command.front(), args), sentence(row)) << "line " << row.line;
        if (row.verdict == "runs") EXPECT_EQ(commands().back().args, args) << "line " << row.line;
    }
}

TEST_F(TerminalBridgeTest, EveryChangingWordNeedsTheUserWithEveryProgram) {
    for (const std::string program : allowedPrograms)
        for (const std::string word :
             {"install", "uninstall", "publish", "update", "upgrade", "add",    "remove", "push",
              "pull",    "fetch",     "clone",   "commit", "merge",   "rebase", "reset",  "checkout",
              "clean",   "rm",        "mv",      "init",   "tag",     "stash"})
            EXPECT_EQ(refusal(program, {"-n", word, "."}),
                      program + " " + word +
                          " vyžaduje tvoje potvrzení. Schvalování zatím neumím — udělej to na Macu sám.");
}

TEST_F(TerminalBridgeTest, AdmitsInterpretersWithAnyCodeOnPurpose) {
    EXPECT_EQ(refusal("python3", {"-c", "import shutil; shutil.rmtree('.')"}), "");
    EXPECT_EQ(refusal("node", {"-e", "require('child_process').exec('rm -rf .')"}), "");
    EXPECT_EQ(refusal("swift", {"script.swift"}), "");
    EXPECT_EQ(refusal("npm", {"run", "anything"}), "");
}

TEST_F(TerminalBridgeTest, AdmitsWritingFormsOfBranchRemoteAndConfigOnPurpose) {
    EXPECT_EQ(refusal("git", {"branch", "-D", "main"}), "");
    EXPECT_EQ(refusal("git", {"remote", "add", "x", "y"}), "");
    EXPECT_EQ(refusal("git", {"config", "core.pager", "sh"}), "");
}

TEST_F(TerminalBridgeTest, AdmitsHelpersOfSearchProgramsThatTheListDoesNotName) {
    EXPECT_EQ(refusal("rg", {"--pre", "sh", "x"}), "");
    EXPECT_EQ(refusal("rg", {"--hostname-bin=./x", "x"}), "");
    EXPECT_EQ(refusal("find", {".", "-fprint", "a"}), "");
    EXPECT_EQ(refusal("git", {"diff", "--ext-diff"}), "");
}

TEST_F(TerminalBridgeTest, AdmitsTheEffectsThatTheDocumentTells) {
    const std::vector<std::vector<std::string>> commands = {
        {"find", ".", "-maxdepth", "0", "-fprintf", "../x", "text"},
        {"git", "config", "--file=../x", "core.pager", "sh"},
        {"git", "--config-env=core.fsmonitor=SHELL", "status"},
        {"git", "remote", "add", "x", "ext::sh -c touch% x"},
        {"file", "-C", "--magic-file", "magic"},
        {"wc", "--files0-from=/etc/passwd"},
        {"npm", "exec", "--call", "touch x"},
        {"npm", "pkg", "set", "scripts.test=x"},
        {"npm", "version", "patch"},
        {"rg", "--pre", "./x", "needle"},
    };
    std::ostringstream document;
    document << std::ifstream(MORVEX_SOURCE_DIR "/docs/security.md").rdbuf();
    for (const auto& command : commands) {
        std::string line;
        for (const auto& word : command) line += word.contains(' ') ? " '" + word + "'" : " " + word;
        EXPECT_EQ(refusal(command.front(), {command.begin() + 1, command.end()}), "") << line;
        EXPECT_TRUE(document.str().contains("| `" + line.substr(1) + "` |")) << line;
    }
}

TEST_F(TerminalBridgeTest, DoesNotExamineDotsInARelativePathOnPurpose) {
    EXPECT_EQ(refusal("cat", {"../../outside/a"}), "");
    EXPECT_EQ(refusal("cat", {"--file=/etc/passwd"}), "");
}

TEST_F(TerminalBridgeTest, TheGivenPathOfTheProgramIsIgnored) {
    ASSERT_EQ(refusal("/somewhere/else/ls", {}), "");
    EXPECT_EQ(commands().back().binary, tree.path("bin/ls"));
}

TEST_F(TerminalBridgeTest, RunsInTheWorkingFolderWithThePlainEnvironment) {
    ASSERT_EQ(refusal("git", {"status"}), "");
    auto command = commands().back();
    EXPECT_EQ(command.binary, tree.path("bin/git"));
    EXPECT_EQ(command.args, std::vector<std::string>{"status"});
    EXPECT_EQ(command.cwd, tree.path("home/Projects"));
    EXPECT_EQ(command.env.at("TERM"), "dumb");
    EXPECT_EQ(command.env.at("NO_COLOR"), "1");
    EXPECT_TRUE(command.env.at("PATH").starts_with(tree.path("bin") + ":"));
}

TEST_F(TerminalBridgeTest, TheFolderIsFoundByItsNameOrIsTheOnlyOne) {
    allowed = {"home/Projects", "outside"};
    EXPECT_EQ(refusal("ls", {}), "Pracovní složka (neurčena) není mezi povolenými.");
    EXPECT_EQ(refusal("ls", {}, "Music"), "Pracovní složka Music není mezi povolenými.");
    EXPECT_EQ(refusal("ls", {}, ""), "Pracovní složka  není mezi povolenými.");
    ASSERT_EQ(refusal("ls", {}, "OUTSIDE"), "");
    EXPECT_EQ(commands().back().cwd, tree.path("outside"));
    allowed = {};
    EXPECT_EQ(refusal("ls", {}), "Pracovní složka (neurčena) není mezi povolenými.");
}

TEST_F(TerminalBridgeTest, TheWordsAreJudgedBeforeTheFolderAndTheFolderBeforeThePaths) {
    allowed = {};
    EXPECT_EQ(refusal("git", {"push"}), (Chyba{Chyba::VyzadujePotvrzeni{"git push"}}.popis().czech()));
    EXPECT_EQ(refusal("find", {".", "-delete"}),
              "Ten příkaz nespustím: obsahuje -delete, což umí spustit cokoli dalšího");
    EXPECT_EQ(refusal("cat", {"/etc/passwd"}), (Chyba{Chyba::MimoPovolene{"(neurčena)"}}.popis().czech()));
}

TEST_F(TerminalBridgeTest, APathMayLieInAnotherAllowedFolder) {
    allowed = {"home/Projects", "outside"};
    tree.file("outside/a", "");
    EXPECT_EQ(refusal("cat", {tree.path("outside/a")}, "projects"), "");
}

TEST_F(TerminalBridgeTest, AFolderThatIsRemovedWhileTheProgramIsLookedForIsNotWorkedIn) {
    allowed = {"home/Projects", "outside"};
    whileLookingForPrograms = [this] { allowed = {"outside"}; };
    EXPECT_EQ(refusal("ls", {}, "projects"), "Pracovní složka projects není mezi povolenými.");
    EXPECT_EQ(refusal("ls", {}, "outside"), "");
}

TEST_F(TerminalBridgeTest, APathIntoAFolderThatIsRemovedWhileTheProgramIsLookedForIsRefused) {
    tree.file("outside/a", "");
    allowed = {"home/Projects", "outside"};
    whileLookingForPrograms = [this] { allowed = {"home/Projects"}; };
    EXPECT_EQ(refusal("cat", {tree.path("outside/a")}, "projects"),
              "Cesta a leží mimo povolené složky. Nesahám na ni.");
}

TEST_F(TerminalBridgeTest, AnAllowedProgramThatIsNotInstalledCannotBeRun) {
    std::filesystem::remove(tree.path("bin/xcodebuild"));
    auto result = run("xcodebuild", {"-list"});
    ASSERT_FALSE(result);
    EXPECT_EQ(*result.error().as<Chyba>(), (Chyba{Chyba::ZakazanyProgram{"xcodebuild"}}));
}

TEST_F(TerminalBridgeTest, EveryGateSpeaksBeforeAProgramIsLookedFor) {
    std::filesystem::remove(tree.path("bin/xcodebuild"));
    EXPECT_EQ(refusal("xcodebuild", {"clean"}),
              "xcodebuild clean vyžaduje tvoje potvrzení. Schvalování zatím neumím — udělej to na Macu sám.");
    EXPECT_EQ(refusal("xcodebuild", {"-exec"}),
              "Ten příkaz nespustím: obsahuje -exec, což umí spustit cokoli dalšího");
    EXPECT_EQ(refusal("xcodebuild", {"-list"}, "Music"), "Pracovní složka Music není mezi povolenými.");
    EXPECT_EQ(refusal("xcodebuild", {"/etc/passwd"}),
              "Cesta passwd leží mimo povolené složky. Nesahám na ni.");
    EXPECT_TRUE(programs.programs.empty()) << "nothing was asked where programs are";
}

TEST_F(TerminalBridgeTest, AFailedLaunchIsPassedOn) {
    programs.problems.emplace(tree.path("bin/ls"), SystemError{EACCES});
    auto result = run("ls", {});
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error().popis().czech(),
              "ls skončil chybou: Nepodařilo se spustit: " + SystemError{EACCES}.popis().czech());
}

TEST_F(TerminalBridgeTest, ThePathCheckFailsWithItsOwnErrors) {
    auto result = run("cat", {"~/.ssh/id_rsa"});
    ASSERT_FALSE(result);
    EXPECT_NE(result.error().as<SouboryChyba>(), nullptr);
}

TEST_F(TerminalBridgeTest, OutputIsCutTo6000CharactersAndErrorsTo2000WithoutAMark) {
    answer = {.output = std::string(10'000, 'x'), .errors = std::string(10'000, 'e')};
    auto result = run("ls", {}).value();
    EXPECT_EQ(result.vystup, std::string(6000, 'x'));
    EXPECT_EQ(result.chyby, std::string(2000, 'e'));
}

TEST_F(TerminalBridgeTest, TheCutCountsCharactersThatPeopleSee) {
    const std::string family = "👨‍👩‍👧‍👦";
    answer = ScriptedPrograms::Answer{};
    for (int i = 0; i < 6001; ++i) answer->output += family;
    auto result = run("ls", {}).value();
    EXPECT_EQ(countCharacters(result.vystup), 6000U);
    EXPECT_EQ(result.vystup.size(), 6000 * family.size());
}

TEST_F(TerminalBridgeTest, CharactersWithoutEndAreBoundedInBytes) {
    answer = {.output = "e"};
    for (int i = 0; i < 1'000'000; ++i) answer->output += "\u0301";
    EXPECT_LE(run("ls", {}).value().vystup.size(), 6000U * 64 + 3);
}

TEST_F(TerminalBridgeTest, AStatusThatIsNotZeroIsAResult) {
    answer = {.output = "out", .errors = "err", .status = 3};
    auto result = run("ls", {}).value();
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.vystup, "out");
    EXPECT_EQ(result.chyby, "err");
}

TEST_F(TerminalBridgeTest, ACommandOfAMinuteIsStoppedAndTheTimeOutIsNotReported) {
    auto& child = begin("tail", {"-f", "log"});
    child.listener->output("so far");
    EXPECT_EQ(clock.untilNext(), 60s);
    clock.advance(60s);
    EXPECT_EQ(child.signals, std::vector{ChildSignal::terminate});
    clock.advance(4s);
    EXPECT_EQ(child.signals, (std::vector{ChildSignal::terminate, ChildSignal::kill}));
    end(child, 9);
    EXPECT_EQ(later.value().value().status, 9);
    EXPECT_EQ(later->value().vystup, "so far");
}

TEST_F(TerminalBridgeTest, AStopCancelsTheCommandAndRefusesLaterOnes) {
    auto& child = begin("tail", {"-f", "log"});
    stop.request_stop();
    EXPECT_EQ(child.signals, std::vector{ChildSignal::terminate});
    end(child, 15);
    EXPECT_EQ(later.value().value().status, 15);
    EXPECT_EQ(refusal("ls", {}), "Zrušeno.");
}

TEST_F(TerminalBridgeTest, CallsDoNotExcludeEachOther) {
    auto& child = begin("tail", {"-f", "log"});
    answer = {.output = "x"};
    EXPECT_EQ(run("ls", {}).value().vystup, "x");
    EXPECT_FALSE(later);
    end(child, 0);
    EXPECT_TRUE(later);
}

TEST_F(TerminalBridgeTest, ARealCommandShowsWhatLiesInTheFolder) {
    tree.file("home/Projects/plán.txt", "x");
    SystemLauncher launcher;
    ThreadExecutor home("home");
    ThreadExecutor workers("workers");
    ProgramDiscovery real(launcher, clock, workers,
                          {{{"PATH", "/usr/bin:/bin"}, {"LC_ALL", "C.UTF-8"}}, tree.path("home")});
    TerminalBridge bridge({launcher, clock, real, workers});
    auto povolene = [this] { return tree.allowed(); };
    auto result =
        await(home, bridge.spustitPrikaz("ls", {tree.path("home/Projects"), "missing"}, {}, povolene, {}))
            .value();
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.vystup, tree.path("home/Projects") + ":\nplán.txt\n");
    EXPECT_TRUE(result.chyby.contains("missing"));
    EXPECT_EQ(await(home, bridge.spustitPrikaz("cat", {"plán.txt"}, {}, povolene, {})).value().vystup, "x");
}

} // namespace
} // namespace morvex
