#include "tests/support/InstalledAgents.h"
#include "tests/support/UiHarness.h"

namespace morvex {
namespace {

/// A task of an agent that the test plays, in the windows.
class RunningTaskTest : public UiHarness {
  protected:
    RunningTaskTest() { installAgents(temporary.path() / "bin", environment, programs); }

    ScriptedPrograms::Child& begin() {
        phone.call("mac.codex.run", R"({"instruction":"Oprav testy"})", "r");
        settle();
        return *programs.children.back();
    }

    /// The agent heeds the signal that it should have got.
    void expectStopped(const ScriptedPrograms::Child& agent) {
        EXPECT_EQ(agent.signals, std::vector{ChildSignal::terminate});
        agent.listener->exited(15);
        agent.listener->ended();
        settle();
        EXPECT_TRUE(reads("Codex · Přerušeno · 15.01.27 8:00"));
        EXPECT_FALSE(mentions("Zastavit"));
    }
};

TEST_F(RunningTaskTest, IsStoppedInItsRow) {
    startSecured();
    allowFolder("Projekty");
    openUi();
    auto& agent = begin();
    EXPECT_TRUE(reads("Codex · Pracuje · 15.01.27 8:00"));
    press("Zastavit: Oprav testy");
    expectStopped(agent);
}

TEST_F(RunningTaskTest, IsStoppedInTheWindowOfTheTray) {
    startSecured();
    allowFolder("Projekty");
    openUi();
    ui->toggleMenu({});
    settle();
    auto& agent = begin();
    EXPECT_TRUE(reads("Běží: Codex", menu()));
    press("Zastavit", menu());
    expectStopped(agent);
    EXPECT_FALSE(mentions("Běží", menu()));
}

} // namespace
} // namespace morvex
