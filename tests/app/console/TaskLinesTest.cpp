#include "app/console/TaskLines.h"

#include "app/programs/ProgramDiscovery.h"
#include "platform/memory/ImmediateExecutor.h"
#include "platform/memory/ManualClock.h"
#include "platform/memory/ManualExecutor.h"
#include "platform/memory/ScriptedPrograms.h"
#include "platform/memory/ScriptedRandom.h"
#include "platform/memory/ScriptedUrlOpener.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace morvex {
namespace {

class TaskLinesTest : public testing::Test {
  protected:
    Uuid begin(const std::string& title) {
        return historie->zaloz({{}, {}, "codex", title, title, "/home/jana/Projekty"}).workItemID;
    }

    std::vector<std::string> lines() { return taskLines(*historie, agenti); }

    TemporaryFolder temporary;
    ManualClock clock;
    ImmediateExecutor saving;
    ScriptedRandom random;
    ScriptedUrlOpener opener;
    ScriptedPrograms programs;
    ManualExecutor executor;
    ProgramDiscovery discovery{programs, clock, executor, {}};
    AgentRunner agenti{{programs, clock, discovery, executor, executor}, {}};
    std::unique_ptr<HistorieAgentu> historie =
        HistorieAgentu::create(temporary.path(), {{saving, saving, clock}, random, opener});
};

TEST_F(TaskLinesTest, WithoutTasksSaySo) {
    EXPECT_EQ(lines(), std::vector<std::string>{"Úlohy: žádná tu není"});
}

TEST_F(TaskLinesTest, EveryTaskIsALineWithTheFirstLineOfItsEnd) {
    historie->dokonci(begin("Testy"), "Opraveno.\nA ještě něco.", {});
    historie->selhal(begin("Web"), Sentence("Nejde to."));
    historie->preruseno(begin("Úklid"));
    begin("Teď");
    EXPECT_EQ(lines(), (std::vector<std::string>{
                           "Úloha 1: Teď — běží (codex, Projekty)",
                           "Úloha 2: Úklid — přerušeno (codex, Projekty)",
                           "Úloha 3: Web — nepovedlo se (codex, Projekty): Nejde to.",
                           "Úloha 4: Testy — hotovo (codex, Projekty): Opraveno.",
                       }));
}

TEST_F(TaskLinesTest, ANameCannotPassForALineOfItsOwn) {
    begin("Testy\nÚloha 2: Cizí — hotovo");
    EXPECT_EQ(lines(), std::vector<std::string>{"Úloha 1: Testy — běží (codex, Projekty)"});
}

} // namespace
} // namespace morvex
