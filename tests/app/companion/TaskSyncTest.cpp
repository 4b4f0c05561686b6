#include "tests/app/companion/AgentHarness.h"

#include <gmock/gmock.h>

namespace morvex {
namespace {

using namespace std::chrono_literals;

class TaskSyncTest : public AgentHarness {
  protected:
    /// The phone goes and comes back. Gives what it gets then.
    std::vector<ScriptedPhone::Received> reconnect() {
        (void)connectAgain();
        return settled();
    }

    void acknowledge(const Uuid& id, std::uint64_t revision) {
        phone.send({MacPayload::WorkItemAck{id, revision}}, "work-item-ack:" + id.text());
        executor.runUntilIdle();
    }
};

TEST_F(TaskSyncTest, ATaskThatEndedWithoutTheLinkComesAgainUntilItIsAcknowledged) {
    startWithFolder();
    auto id = begin("mac.codex.run");
    companion->odpojit();
    say(R"({"type":"thread.started","thread_id":"s1"})");
    finish();
    EXPECT_TRUE(settled().empty());

    for (int times = 0; times < 2; ++times) {
        auto all = reconnect();
        ASSERT_EQ(itemsIn(all).size(), 1U);
        EXPECT_EQ(itemsIn(all).front().status, WorkItemStatus::completed);
        EXPECT_EQ(itemsIn(all).front().revision, 3U);
        EXPECT_TRUE(all.front().payload.as<MacPayload::Status>()) << "the status goes first";
    }
    acknowledge(id, 2);
    EXPECT_EQ(itemsIn(reconnect()).size(), 1U) << "an older revision was acknowledged";
    acknowledge(id, 3);
    EXPECT_TRUE(itemsIn(reconnect()).empty());
}

TEST_F(TaskSyncTest, TheCatchUpTellsOfTheStatusThenOfTasksAndThenOfNotes) {
    startWithFolder();
    ASSERT_TRUE(ended(features->records.poznamky().vytvorit("Nákup", "mléko")));
    complete("s1");
    auto all = reconnect();
    ASSERT_EQ(all.size(), 3U);
    EXPECT_TRUE(all[0].payload.as<MacPayload::Status>());
    EXPECT_TRUE(all[1].payload.as<MacPayload::WorkItemUpdate>());
    EXPECT_TRUE(all[2].payload.as<MacPayload::NoteUpdate>());
}

TEST_F(TaskSyncTest, UndeliveredTasksComeInTheOrderOfTheList) {
    startWithFolder();
    auto first = complete("s1");
    auto second = complete("s2");
    auto items = itemsIn(reconnect());
    ASSERT_EQ(items.size(), 2U);
    EXPECT_EQ(items[0].id, second);
    EXPECT_EQ(items[1].id, first);
}

TEST_F(TaskSyncTest, TasksComeBeforeNotesAndOneThatFailsHoldsUpNothing) {
    startWithFolder();
    auto first = complete("s1");
    auto second = complete("s2");
    EXPECT_TRUE(ended(features->records.poznamky().vytvorit("Nákup", "mléko")));
    (void)settled();

    auto socket = connectAgain();
    socket->holdSends();
    executor.runUntilIdle();
    socket->refusals = 1;
    socket->takeSends();
    auto all = settled();
    ASSERT_EQ(all.size(), 3U);
    EXPECT_TRUE(all[0].payload.as<MacPayload::Status>());
    EXPECT_EQ(all[1].requestID, "work-item:" + first.text()) << "the send of the other one failed";
    EXPECT_TRUE(all[2].payload.as<MacPayload::NoteUpdate>());
    EXPECT_EQ(trouble(), "none");

    all = reconnect();
    ASSERT_EQ(itemsIn(all).size(), 2U) << "it comes the next time";
    EXPECT_EQ(itemsIn(all).front().id, second);
    EXPECT_TRUE(all.back().payload.as<MacPayload::NoteUpdate>());
}

TEST_F(TaskSyncTest, AProgressWhoseSendFailsIsLostWithoutAWord) {
    auto socket = startWithSession();
    allowFolder("Projekty");
    begin("mac.codex.run");
    (void)settled();
    socket->refusals = 1;
    say(R"({"type":"item.completed","item":{"type":"command_execution","command":"ls"}})");
    auto all = settled();
    ASSERT_EQ(all.size(), 1U);
    EXPECT_TRUE(all.front().payload.as<MacPayload::Status>()) << "which follows a progress";
    EXPECT_EQ(socket->refusals, 0);
    EXPECT_EQ(trouble(), "none");
    finish();
}

TEST_F(TaskSyncTest, AnAcknowledgementOfAnUnknownTaskChangesNothing) {
    startWithFolder();
    complete("s1");
    (void)settled();
    auto before = historie().polozky();
    acknowledge(Uuid::parse("99999999-0000-4000-8000-000000000000").value(), 9);
    EXPECT_EQ(historie().polozky(), before);
    EXPECT_TRUE(settled().empty());
    EXPECT_EQ(trouble(), "none");
}

TEST_F(TaskSyncTest, ACancelOfThePhoneStopsNoAgent) {
    startWithFolder();
    begin("mac.codex.run");
    phone.send({MacPayload::Cancel{}}, "req-1");
    executor.runUntilIdle();
    EXPECT_TRUE(agent().signals.empty());
    EXPECT_TRUE(features->agents.runner().bezici());
    finish();
}

TEST_F(TaskSyncTest, ThePersonStopsATaskByItsWorkItem) {
    startWithFolder();
    auto other = complete("s1");
    auto id = begin("mac.codex.run");
    EXPECT_FALSE(features->agents.stopTask(other));
    EXPECT_TRUE(agent().signals.empty());
    EXPECT_TRUE(features->agents.stopTask(id));
    finish(15);
    EXPECT_EQ(historie().ukol(id)->stav, UkolAgenta::Stav::preruseno);
    EXPECT_FALSE(features->agents.stopTask(id));
}

TEST_F(TaskSyncTest, AnEndOfTheProgramStopsTheAgentAndTheNextStartTellsOfTheInterruption) {
    startWithFolder();
    auto id = begin("mac.codex.run");
    executor.start(companion->shutDown());
    executor.runUntilIdle();
    EXPECT_EQ(agent().signals, std::vector{ChildSignal::terminate});
    finish(15);
    EXPECT_EQ(historie().ukol(id)->stav, UkolAgenta::Stav::bezi) << "nothing is recorded at that moment";
    end();

    auto socket = startWithSession();
    auto items = itemsIn(settled());
    ASSERT_EQ(items.size(), 1U);
    EXPECT_EQ(items.front().id, id);
    EXPECT_EQ(items.front().status, WorkItemStatus::interrupted);
    EXPECT_EQ(items.front().revision, 2U);
}

TEST_F(TaskSyncTest, ATaskThatRanWhenTheHistoryWasClearedIsToldToItsEnd) {
    startWithFolder();
    auto id = begin("mac.codex.run");
    historie().vymazat();
    EXPECT_TRUE(settled().empty()) << "the phone is not told of the clearing";
    say(R"({"type":"turn.completed","text":"Opraveno."})");
    finish();
    auto items = itemsIn(settled());
    ASSERT_EQ(items.size(), 1U);
    EXPECT_EQ(items.front().id, id);
    EXPECT_EQ(items.front().summary, "Opraveno.");
    EXPECT_TRUE(historie().polozky().empty());
    begin("mac.codex.run");
    finish();
    EXPECT_EQ(itemsIn(reconnect()).size(), 2U);
    acknowledge(id, items.front().revision);
    EXPECT_EQ(itemsIn(reconnect()).size(), 1U);
}

TEST_F(TaskSyncTest, ThePersonStopsATaskThatTheHistoryHasForgotten) {
    startWithFolder();
    auto id = begin("mac.codex.run");
    historie().vymazat();
    EXPECT_TRUE(features->agents.stopTask(id));
    finish(15);
    EXPECT_EQ(itemsIn(settled()).back().status, WorkItemStatus::interrupted);
}

TEST_F(TaskSyncTest, TheLongestTaskFitsIntoAFrame) {
    const std::string worst(HistorieAgentu::longestText + 1, '\x01');
    UkolAgenta ukol;
    ukol.relace = std::string(512, '"');
    ukol.nastroj = worst;
    ukol.slozka = worst;
    ukol.nazev = worst;
    ukol.instrukce = worst;
    ukol.shrnuti = worst;
    ukol.chyba = Sentence(worst);
    ukol.revize = 7;
    auto file = applicationSupport() / "TalkSpan" / "agent-tasks.json";
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file) << encode(std::vector{ukol});
    auto socket = startWithSession();
    auto items = itemsIn(settled());
    ASSERT_EQ(items.size(), 1U);
    EXPECT_TRUE(items.front().agent);
    for (const auto& frame : socket->sent) EXPECT_LT(frame.size(), frameLimit);
}

TEST_F(TaskSyncTest, BothAgentsAreLookedForAtOnceAndEachIsToldAsSoonAsItIsKnown) {
    startSecured();
    holdDetections();
    auto before = programs.children.size();
    companion->obnovit();
    executor.runUntilIdle();
    ASSERT_EQ(programs.children.size(), before + 2) << "neither waits for the other";
    for (const std::string name : {"codex", "claude"}) {
        auto& state = name == "codex" ? features->agents.stav().codex : features->agents.stav().claude;
        auto asked = std::ranges::find_if(
            programs.programs.begin() + static_cast<std::ptrdiff_t>(before), programs.programs.end(),
            [&](const OutsideProgram& program) { return program.binary.ends_with(name); });
        auto* listener =
            programs.children.at(static_cast<std::size_t>(asked - programs.programs.begin()))->listener;
        listener->output(name + " 2.0\n");
        listener->exited(0);
        listener->ended();
        EXPECT_TRUE(takeStatuses().empty() || name == "claude");
        EXPECT_EQ(state.value().version, name + " 2.0");
    }
}

TEST_F(TaskSyncTest, AnAgentThatIsSwitchedOffIsToldToBe) {
    startSecured();
    companion->integrations().turnOff(Integration::codex);
    auto status = takeStatuses().back();
    EXPECT_EQ(status.codex, (AgentStatus{false, {}, {}, Sentence("Vypnuto")}));
    EXPECT_TRUE(status.claude.installed);
}

TEST_F(TaskSyncTest, BothAgentsAreLookedForAtTheStartAndAgainWhenAsked) {
    start();
    AgentStatus found{true, "agent 1.0", (temporary.path() / "bin").string(), {}};
    EXPECT_EQ(features->agents.stav().codex.value(), found);
    EXPECT_EQ(features->agents.stav().claude.value(), found);
    std::filesystem::remove(temporary.path() / "bin" / "claude");
    companion->obnovit();
    executor.runUntilIdle();
    EXPECT_EQ(features->agents.stav().codex.value(), found);
    EXPECT_THAT(
        features->agents.stav().claude.value().problem.value_or(Sentence()).czech(),
        testing::MatchesRegex(
            R"(Binárku „claude“ jsem nenašel \(prohledáno [0-9]+ adresářů\)\. Nainstaluj: npm i -g @anthropic-ai/claude-code)"));
}

} // namespace
} // namespace morvex
