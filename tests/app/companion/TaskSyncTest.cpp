#include "tests/app/companion/AgentHarness.h"

namespace morvex {
namespace {

using namespace std::chrono_literals;

class TaskSyncTest : public AgentHarness {
  protected:
    /// The phone goes and comes back. Gives what it gets then.
    std::vector<ScriptedPhone::Received> reconnect() {
        auto next = sockets.layOut();
        companion->pripojit();
        executor.runUntilIdle();
        phone.attach(next, *mac);
        phone.logIn();
        executor.runUntilIdle();
        phone.exchangeHellos();
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

TEST_F(TaskSyncTest, UndeliveredTasksComeInTheOrderOfTheList) {
    startWithFolder();
    auto first = complete("s1");
    auto second = complete("s2");
    auto items = itemsIn(reconnect());
    ASSERT_EQ(items.size(), 2U);
    EXPECT_EQ(items[0].id, second);
    EXPECT_EQ(items[1].id, first);
}

TEST_F(TaskSyncTest, AnAcknowledgementOfAnUnknownTaskChangesNothing) {
    startWithFolder();
    complete("s1");
    auto before = historie().polozky();
    acknowledge(Uuid::parse("99999999-0000-4000-8000-000000000000").value(), 9);
    EXPECT_EQ(historie().polozky(), before);
    EXPECT_TRUE(phone.take().empty() || trouble() == "none");
}

TEST_F(TaskSyncTest, ACancelOfThePhoneStopsNoAgent) {
    startWithFolder();
    begin("mac.codex.run");
    phone.send({MacPayload::Cancel{}}, "req-1");
    executor.runUntilIdle();
    EXPECT_TRUE(agent().signals.empty());
    EXPECT_TRUE(companion->agenti().bezici());
    finish();
}

TEST_F(TaskSyncTest, ThePersonStopsATaskByItsWorkItem) {
    startWithFolder();
    auto other = complete("s1");
    auto id = begin("mac.codex.run");
    EXPECT_FALSE(companion->zastavitUkol(other));
    EXPECT_TRUE(agent().signals.empty());
    EXPECT_TRUE(companion->zastavitUkol(id));
    finish(15);
    EXPECT_EQ(historie().ukol(id)->stav, UkolAgenta::Stav::preruseno);
    EXPECT_FALSE(companion->zastavitUkol(id));
}

TEST_F(TaskSyncTest, AnEndOfTheProgramStopsTheAgentAndTheNextStartTellsOfTheInterruption) {
    startWithFolder();
    auto id = begin("mac.codex.run");
    executor.start(companion->ukoncit());
    executor.runUntilIdle();
    EXPECT_EQ(agent().signals, std::vector{ChildSignal::terminate});
    finish(15);
    EXPECT_EQ(historie().ukol(id)->stav, UkolAgenta::Stav::bezi) << "nothing is recorded at that moment";
    end();

    auto socket = startPaired();
    phone.logIn();
    executor.runUntilIdle();
    phone.exchangeHellos();
    auto items = itemsIn(settled());
    ASSERT_EQ(items.size(), 1U);
    EXPECT_EQ(items.front().id, id);
    EXPECT_EQ(items.front().status, WorkItemStatus::interrupted);
    EXPECT_EQ(items.front().revision, 2U);
}

TEST_F(TaskSyncTest, AHistoryThatWasClearedMeanwhileStopsNothing) {
    startWithFolder();
    begin("mac.codex.run");
    historie().vymazat();
    finish();
    EXPECT_TRUE(historie().polozky().empty());
    begin("mac.codex.run");
    finish();
}

TEST_F(TaskSyncTest, BothAgentsAreLookedForAtTheStartAndAgainWhenAsked) {
    start();
    AgentStatus found{true, "agent 1.0", (temporary.path() / "bin").string(), {}};
    EXPECT_EQ(companion->stav().stavCodexu.value(), found);
    EXPECT_EQ(companion->stav().stavClauda.value(), found);
    std::filesystem::remove(temporary.path() / "bin" / "claude");
    companion->obnovit();
    executor.runUntilIdle();
    EXPECT_EQ(companion->stav().stavCodexu.value(), found);
    EXPECT_TRUE(companion->stav().stavClauda.value().problem.value_or("").starts_with(
        "Binárku „claude“ jsem nenašel (prohledáno "));
}

} // namespace
} // namespace morvex
