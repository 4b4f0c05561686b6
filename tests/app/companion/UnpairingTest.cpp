#include "tests/app/companion/AgentHarness.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace morvex {
namespace {

/// How a phone stops being paired.
enum class Way { button, revokedByRelay };

std::string nameOf(const testing::TestParamInfo<Way>& way) {
    return way.param == Way::button ? "ByTheButton" : "ByARevocation";
}

/// What ends with a phone that is not paired any more, and what goes on.
class UnpairingTest : public AgentHarness, public testing::WithParamInterface<Way> {
  protected:
    UnpairingTest() {
        auto command = temporary.path() / "bin" / "ls";
        std::ofstream(command) << "x";
        std::filesystem::permissions(command, std::filesystem::perms::owner_all);
    }

    void unpair() {
        if (GetParam() == Way::button)
            companion->parovani().odvolat();
        else
            phone.deliver({RelayMessage::Failure{RelayFailure::revoked, "Pryč."}});
        executor.runUntilIdle();
    }

    void runAll() {
        while (slow.runUntilIdle() + executor.runUntilIdle() > 0) continue;
    }

    /// With a session; from now on the vault works when `slow` does.
    void startWithSlowVault() {
        storage = &slow;
        startPaired();
        runAll();
        phone.logIn();
        executor.runUntilIdle();
        phone.exchangeHellos();
        executor.runUntilIdle();
    }

    /// Begins a command that runs until `finish`.
    ScriptedPrograms::Child& command(const std::string& requestID) {
        phone.call("mac.terminal.run", R"({"program":"ls","args":["-l"]})", requestID);
        executor.runUntilIdle();
        EXPECT_TRUE(programs.programs.back().binary.ends_with("/ls"));
        return agent();
    }

    static void finish(ScriptedPrograms::Child& child, std::int32_t status) {
        child.listener->exited(status);
        child.listener->ended();
    }

    using AgentHarness::finish;

    /// This phone, or another one, is paired and has a session.
    void pairAgain(ScriptedPhone& newcomer) {
        newcomer.pair = {"AGAIN"};
        const auto peer = newcomer.asPeer();
        (void)store.held.ulozProtejsek(peer);
        companion->stav().protejsek = peer;
        (void)connectAgain(newcomer);
        executor.runUntilIdle();
    }

    /// The request ids of the results that came to this phone.
    std::vector<std::string> resultsAt(ScriptedPhone& one) {
        executor.runUntilIdle();
        std::vector<std::string> ids;
        for (const auto& message : one.take())
            if (message.payload.as<MacPayload::ToolResult>()) ids.push_back(message.requestID);
        return ids;
    }

    /// A call of this computer's own assistant, which its person approves when `isApproved`.
    std::shared_ptr<std::optional<boost::json::object>>
    callHere(const std::string& tool, boost::json::object arguments, bool isApproved) {
        auto answer = std::make_shared<std::optional<boost::json::object>>();
        executor.start([](ToolGate* gate, std::string name, boost::json::object given,
                          std::shared_ptr<std::optional<boost::json::object>> kept) -> Task<void> {
            kept->emplace(co_await gate->provestMistne(std::move(name), std::move(given)));
        }(&companion->toolGate(), tool, std::move(arguments), answer));
        executor.runUntilIdle();
        if (isApproved) companion->schvalovani().rozhodnout(true);
        executor.runUntilIdle();
        return answer;
    }

    static constexpr ChildSignal asked = ChildSignal::terminate;
    ManualExecutor slow;
    ScriptedPhone another{clock};
};

/// After „Odpojit telefon“.
using ForgottenTrouble = CompanionHarness;

INSTANTIATE_TEST_SUITE_P(Way, UnpairingTest, testing::Values(Way::button, Way::revokedByRelay), nameOf);

TEST_P(UnpairingTest, ThePhoneIsForgottenAndItsLinkGoesDown) {
    auto socket = startSecured();
    unpair();
    EXPECT_FALSE(companion->stav().protejsek.value());
    EXPECT_FALSE(store.held.nactiProtejsek().value());
    EXPECT_FALSE(socket->closed.empty());
    EXPECT_EQ(availability(),
              GetParam() == Way::button ? "Nespárováno" : "Párování neplatí — Zařízení bylo odvoláno.");
    const auto connections = sockets.urls.size();
    sleep.fallAsleep();
    sleep.wake();
    executor.runUntilIdle();
    EXPECT_EQ(sockets.urls.size(), connections);
}

TEST_F(ForgottenTrouble, WhatWentWrongOnTheWayToThePhoneGoesWithIt) {
    auto socket = startSecured();
    socket->breakWith("Relay neodpověděl.");
    executor.runUntilIdle();
    ASSERT_EQ(trouble(), "Relay neodpověděl.");
    companion->parovani().odvolat();
    EXPECT_EQ(trouble(), "none");
    executor.runUntilIdle();
    EXPECT_EQ(trouble(), "none");
}

TEST_F(ForgottenTrouble, AStatusThatWasOnItsWayTellsNothingAfterwards) {
    auto socket = startSecured();
    socket->holdSends();
    executor.start(companion->context().poslatStav());
    executor.runUntilIdle();
    companion->parovani().odvolat();
    executor.runUntilIdle();
    EXPECT_FALSE(socket->closed.empty());
    EXPECT_EQ(trouble(), "none");
}

TEST_P(UnpairingTest, ARunningCommandIsStopped) {
    startWithFolder();
    auto& running = command("mac-local:1");
    EXPECT_TRUE(running.signals.empty());
    unpair();
    EXPECT_EQ(running.signals, std::vector{asked}) << "whatever the phone calls its call";
    finish(running, 15);
    EXPECT_TRUE(resultsAt(phone).empty());
}

TEST_P(UnpairingTest, ACommandThatIsStillLookedForDoesNotStart) {
    workers = &slow;
    startWithFolder();
    const auto launched = programs.programs.size();
    phone.call("mac.terminal.run", R"({"program":"ls","args":["-l"]})", "c");
    executor.runUntilIdle();
    unpair();
    runAll();
    EXPECT_TRUE(std::none_of(programs.programs.begin() + static_cast<std::ptrdiff_t>(launched),
                             programs.programs.end(),
                             [](const OutsideProgram& program) { return program.binary.ends_with("/ls"); }));
    end();
}

TEST_P(UnpairingTest, ARunningAgentIsStoppedAndItsTaskKeptAsInterrupted) {
    startWithFolder();
    auto id = begin("mac.codex.run");
    unpair();
    EXPECT_EQ(agent().signals, std::vector{asked});
    finish(15);
    EXPECT_EQ(historie().ukol(id)->stav, UkolAgenta::Stav::preruseno);
    EXPECT_FALSE(features->agents.currentTask());
}

TEST_P(UnpairingTest, ATaskThatIsBeingPreparedStartsNoAgent) {
    startWithFolder();
    holdDetections();
    auto id = begin("mac.claude.run");
    const auto launched = programs.programs.size();
    unpair();
    EXPECT_EQ(agent().signals, std::vector{asked}) << "the detection ends too";
    finish(15);
    EXPECT_EQ(programs.programs.size(), launched);
    EXPECT_EQ(historie().ukol(id)->stav, UkolAgenta::Stav::preruseno);
}

TEST_P(UnpairingTest, ATaskWhoseSessionIsGoneIsNotBegunAnew) {
    startWithFolder();
    complete("s1");
    auto id = begin("mac.codex.run");
    const auto launched = programs.programs.size();
    unpair();
    finish(15, "thread not found");
    EXPECT_EQ(programs.programs.size(), launched);
    EXPECT_EQ(historie().ukol(id)->stav, UkolAgenta::Stav::preruseno);
}

TEST_P(UnpairingTest, AWaitingApprovalIsRefused) {
    startWithFolder();
    auto answer = callHere("mac.notes.create", {{"title", "a"}, {"body", "b"}}, false);
    ASSERT_TRUE(companion->schvalovani().zadost().value());
    unpair();
    EXPECT_FALSE(companion->schvalovani().zadost().value());
    ASSERT_TRUE(*answer);
    EXPECT_EQ(**answer, (boost::json::object{{"error", "Akce nebyla potvrzena."}}));
    EXPECT_TRUE(features->records.poznamky().vsechny().empty());
}

TEST_P(UnpairingTest, MessagesThatWaitAreNotCarriedOut) {
    const auto folder = startWithFolder();
    auto& running = command("c");
    phone.call("mac.files.write", R"({"path":"a.txt","content":"1"})", "w");
    phone.send({MacPayload::NoteUpdate{{random.uuid(), "Z telefonu", "x", clock.now(), clock.now(), 1, {}}}},
               "n");
    phone.send({MacPayload::OpenAICredential{"sk-1"}}, "k");
    executor.runUntilIdle();
    unpair();
    finish(running, 15);
    executor.runUntilIdle();
    EXPECT_FALSE(std::filesystem::exists(folder + "/a.txt"));
    EXPECT_TRUE(features->records.poznamky().vsechny().empty());
    EXPECT_TRUE(vault.items.empty());
}

TEST_P(UnpairingTest, SettingsThatWaitForTheirTurnAreNotTaken) {
    startWithSlowVault();
    phone.send({MacPayload::CustomApps{{{"p1", "a", "https://a", "t"}}}}, "apps");
    executor.runUntilIdle();
    (void)connectAgain();
    phone.send({MacPayload::CustomApps{{{"p2", "b", "https://b", "t"}}}}, "apps");
    executor.runUntilIdle();
    unpair();
    runAll();
    EXPECT_TRUE(vault.items.contains({Keychain::service, "custom.app.p1.token"})) << "under way before";
    EXPECT_FALSE(vault.items.contains({Keychain::service, "custom.app.p2.token"}));
    workers = &slow;
    end();
}

TEST_P(UnpairingTest, NothingWaitsForASlowVault) {
    startWithSlowVault();
    allowFolder("Projekty");
    auto& running = command("c");
    unpair();
    EXPECT_TRUE(store.held.nactiProtejsek().value()) << "the vault has not answered yet";
    EXPECT_EQ(running.signals, std::vector{asked});
    EXPECT_FALSE(companion->stav().protejsek.value());
    finish(running, 15);
    runAll();
    EXPECT_FALSE(store.held.nactiProtejsek().value());
    workers = &slow;
    end();
}

TEST_P(UnpairingTest, WhatTheOwnAssistantBeganGoesOn) {
    startWithFolder();
    auto accepted = callHere("mac.codex.run", {{"instruction", "Oprav testy"}}, true);
    ASSERT_TRUE(*accepted && (*accepted)->contains("accepted"));
    auto& work = agent();
    auto listed = callHere("mac.terminal.run", {{"program", "ls"}, {"args", {"-l"}}}, false);
    auto& running = agent();
    ASSERT_NE(&work, &running);
    unpair();
    EXPECT_TRUE(work.signals.empty());
    EXPECT_TRUE(running.signals.empty());
    finish(running, 0);
    finish(work, 0);
    executor.runUntilIdle();
    EXPECT_EQ((**listed)["exit_code"], 0);
    EXPECT_EQ(historie().polozky().front().stav, UkolAgenta::Stav::hotovo);
}

TEST_P(UnpairingTest, ThePhoneThatIsPairedNextWorksUndisturbed) {
    for (auto* next : {&phone, &another}) {
        startWithFolder();
        auto& old = command("old");
        unpair();
        pairAgain(*next);
        const auto launched = programs.programs.size();
        next->call("mac.terminal.run", R"({"program":"ls","args":["-a"]})", "new");
        EXPECT_TRUE(resultsAt(*next).empty());
        EXPECT_EQ(programs.programs.size(), launched) << "one call at a time";
        finish(old, 15);
        executor.runUntilIdle();
        ASSERT_EQ(programs.programs.size(), launched + 1);
        auto& own = agent();
        EXPECT_TRUE(own.signals.empty());
        finish(own, 0);
        EXPECT_EQ(resultsAt(*next), std::vector<std::string>{"new"});
        phone.pair = {"PAIR"};
        end();
    }
}

TEST_P(UnpairingTest, TheNextPhoneIsToldOfTheInterruptionAndMayBeginATask) {
    startWithFolder();
    auto id = begin("mac.codex.run");
    auto& old = agent();
    unpair();
    pairAgain(another);
    another.call("mac.codex.run", R"({"instruction":"Další"})", "early");
    executor.runUntilIdle();
    EXPECT_EQ(features->agents.currentTask(), id) << "the old one has not ended yet";
    (void)another.take();
    finish(old, 15);
    executor.runUntilIdle();
    auto items = itemsIn(another.take());
    ASSERT_EQ(items.size(), 1U);
    EXPECT_EQ(items.front().status, WorkItemStatus::interrupted);

    another.call("mac.codex.run", R"({"instruction":"Další"})", "late");
    executor.runUntilIdle();
    EXPECT_NE(features->agents.currentTask(), id);
    EXPECT_TRUE(agent().signals.empty());
    finish();
    EXPECT_EQ(historie().polozky().front().stav, UkolAgenta::Stav::hotovo);
}

} // namespace
} // namespace morvex
