#include "tests/support/CompanionHarness.h"

#include <algorithm>
#include <filesystem>

namespace morvex {
namespace {

/// What a new link, or a new session of the same link, may do while the one before still has work under way.
class NewLinkTest : public CompanionHarness {
  protected:
    /// A call that runs until `slow` does. The folder that is allowed.
    std::string callThatLasts() {
        workers = &slow;
        socket = startSecured();
        auto folder = allowFolder("Projekty");
        phone.call("mac.files.search", "{}", "old");
        executor.runUntilIdle();
        return folder;
    }

    /// The paired companion with a session, whose vault works on this executor.
    void startSecuredWith(ManualExecutor& vaultThread) {
        storage = &vaultThread;
        socket = startPaired();
        workOn(vaultThread);
        beginSession();
        (void)phone.take();
    }

    void workOn(ManualExecutor& vaultThread) {
        for (int round = 0; round < 12; ++round) {
            vaultThread.runUntilIdle();
            executor.runUntilIdle();
        }
    }

    void sendNote() {
        MorvexNote note{random.uuid(), "Z telefonu", "obsah", clock.now(), clock.now(), 1, {}};
        phone.send({MacPayload::NoteUpdate{note}}, "note");
        executor.runUntilIdle();
    }

    /// The request ids of the results that came to the phone since the last call.
    std::vector<std::string> takeResults() {
        executor.runUntilIdle();
        std::vector<std::string> ids;
        for (const auto& received : phone.take())
            if (received.payload.as<MacPayload::ToolResult>()) ids.push_back(received.requestID);
        return ids;
    }

    /// The connection breaks, and the link makes its next one; up to the relay's challenge.
    void loseConnection() {
        auto next = sockets.layOut();
        socket->breakWith("přerušeno");
        executor.runUntilIdle();
        clock.advance(std::chrono::seconds(2));
        executor.runUntilIdle();
        socket = std::move(next);
        phone.attach(socket, *mac);
    }

    void beginSession() {
        phone.logIn();
        executor.runUntilIdle();
        phone.exchangeHellos();
        executor.runUntilIdle();
    }

    void finishCalls() {
        for (int round = 0; round < 8; ++round) {
            slow.runUntilIdle();
            executor.runUntilIdle();
        }
    }

    ManualExecutor slow;
    std::shared_ptr<ScriptedSocket> socket;
};

TEST_F(NewLinkTest, AfterANewLinkAReplyIsLostAndTheNextCallWaitsForTheOldOne) {
    callThatLasts();
    (void)connectAgain();
    phone.call("mac.status", "{}", "new");
    EXPECT_TRUE(takeResults().empty()) << "one call at a time, over links too";

    slow.runUntilIdle();
    EXPECT_EQ(takeResults(), std::vector<std::string>{"new"});
    end();
}

TEST_F(NewLinkTest, ANewLinkIsLookedAtWhileACallOfTheOldOneRuns) {
    callThatLasts();
    companion->odpojit();
    auto socket = sockets.layOut();
    companion->pripojit();
    executor.runUntilIdle();
    phone.attach(socket, *mac);
    logInBeforeThePhone();
    EXPECT_EQ(takeStatuses().size(), 1U);
    EXPECT_EQ(availability(), "Připraven");

    sendNote();
    ASSERT_EQ(features->records.poznamky().vsechny().size(), 1U) << "only calls wait";
    slow.runUntilIdle();
    end();
}

TEST_F(NewLinkTest, ALostConnectionIsToldWhileACallRuns) {
    callThatLasts();
    loseConnection();
    EXPECT_EQ(trouble(), "přerušeno");
    phone.logIn(false);
    executor.runUntilIdle();
    EXPECT_EQ(availability(), "Telefon není připojený");
    finishCalls();
    end();
}

TEST_F(NewLinkTest, TheNextSessionIsLookedAtWhileACallOfTheOneBeforeRuns) {
    callThatLasts();
    loseConnection();
    beginSession();
    EXPECT_EQ(availability(), "Připraven");
    EXPECT_EQ(takeStatuses().size(), 1U);

    sendNote();
    EXPECT_EQ(features->records.poznamky().vsechny().size(), 1U) << "only calls wait";
    phone.call("mac.status", "{}", "new");
    EXPECT_TRUE(takeResults().empty()) << "one call at a time, over sessions too";
    finishCalls();
    EXPECT_EQ(takeResults(), (std::vector<std::string>{"old", "new"}))
        << "the link is the same, and so the old call has its answer";
    end();
}

TEST_F(NewLinkTest, TheNextSessionIsLookedAtAlsoWhileMoreMessagesWaitThanTheLinkTakes) {
    callThatLasts();
    for (int i = 0; i < 600; ++i) phone.call("mac.status", "{}", "waiting");
    executor.runUntilIdle();
    loseConnection();
    EXPECT_EQ(trouble(), "přerušeno");
    beginSession();
    EXPECT_EQ(availability(), "Připraven");
    EXPECT_EQ(takeStatuses().size(), 1U);
    finishCalls();
    EXPECT_EQ(takeResults().size(), 601U);
    end();
}

TEST_F(NewLinkTest, CallsOfTheSessionBeforeComeFirst) {
    const auto folder = callThatLasts();
    phone.call("mac.files.write", R"({"path":"a.txt","content":"1"})", "waiting");
    executor.runUntilIdle();
    loseConnection();
    beginSession();
    (void)takeStatuses();
    phone.call("mac.files.write", R"({"path":"b.txt","content":"1"})", "new");
    finishCalls();
    EXPECT_EQ(takeResults(), (std::vector<std::string>{"old", "waiting", "new"}));
    EXPECT_TRUE(std::filesystem::exists(folder + "/a.txt"));
    EXPECT_TRUE(std::filesystem::exists(folder + "/b.txt"));
    end();
}

TEST_F(NewLinkTest, ACallWaitsAlsoForTheCallOfASessionBeforeTheLast) {
    ManualExecutor vaultThread;
    workers = &slow;
    startSecuredWith(vaultThread);
    allowFolder("Projekty");
    phone.call("mac.files.search", "{}", "old");
    executor.runUntilIdle();
    loseConnection();
    beginSession();
    phone.send({MacPayload::OpenAICredential{"sk-1"}}, "key");
    executor.runUntilIdle();
    loseConnection();
    beginSession();
    phone.call("mac.status", "{}", "new");
    executor.runUntilIdle();
    workOn(vaultThread);
    EXPECT_TRUE(takeResults().empty()) << "the session between had a key only, and is done with it";

    finishCalls();
    EXPECT_EQ(takeResults(), (std::vector<std::string>{"old", "new"}));
    end();
}

TEST_F(NewLinkTest, MessagesThatWaitAtTheEndOfALinkAreDropped) {
    callThatLasts();
    sendNote();
    loseConnection();
    beginSession();
    phone.call("mac.status", "{}", "new");
    executor.runUntilIdle();
    companion->odpojit();
    finishCalls();
    EXPECT_TRUE(features->records.poznamky().vsechny().empty());
    end();
}

TEST_F(NewLinkTest, OverALinkTheOrderStaysWhileItsCallWaitsForTheOldOne) {
    callThatLasts();
    (void)connectAgain();
    phone.call("mac.notes.search", "{}", "new");
    sendNote();
    EXPECT_TRUE(features->records.poznamky().vsechny().empty()) << "it came behind the call";
    slow.runUntilIdle();
    executor.runUntilIdle();
    EXPECT_EQ(features->records.poznamky().vsechny().size(), 1U);
    end();
}

TEST_F(NewLinkTest, ACallWhoseLinkGoesBeforeItsTurnIsNotCarriedOut) {
    const auto folder = callThatLasts();
    (void)connectAgain();
    phone.call("mac.files.write", R"({"path":"a.txt","content":"1"})", "second");
    executor.runUntilIdle();
    (void)connectAgain();
    phone.call("mac.files.write", R"({"path":"b.txt","content":"1"})", "third");
    executor.runUntilIdle();
    finishCalls();
    EXPECT_EQ(takeResults(), std::vector<std::string>{"third"});
    EXPECT_FALSE(std::filesystem::exists(folder + "/a.txt"));
    EXPECT_TRUE(std::filesystem::exists(folder + "/b.txt"));
    end();
}

TEST_F(NewLinkTest, ACallWhoseLinkGoesWhileRecordsAreSavedIsNotCarriedOut) {
    records = &slow;
    startSecured();
    const auto folder = allowFolder("Projekty");
    sendNote();
    phone.call("mac.files.write", R"({"path":"a.txt","content":"1"})", "old");
    executor.runUntilIdle();
    (void)connectAgain();
    finishCalls();
    EXPECT_EQ(features->records.poznamky().vsechny().size(), 1U) << "the note had come before";
    EXPECT_FALSE(std::filesystem::exists(folder + "/a.txt"));
    end();
}

TEST_F(NewLinkTest, AnEndWhileACallOfANewLinkWaitsIsClean) {
    callThatLasts();
    (void)connectAgain();
    phone.call("mac.status", "{}", "new");
    executor.runUntilIdle();
    end();
}

TEST_F(NewLinkTest, SettingsCountInTheOrderOfTheirComingWhileTheVaultIsSlow) {
    startSecuredWith(slow);
    phone.send({MacPayload::CustomApps{{{"p1", "a", "https://a", "t"}}}}, "apps");
    executor.runUntilIdle();
    (void)connectAgain();
    phone.send({MacPayload::CustomApps{{{"p2", "b", "https://b", "t"}}}}, "apps");
    executor.runUntilIdle();
    workOn(slow);
    EXPECT_EQ(customApps(), (std::vector<AppSummary>{{"p2", "b", "https://b", true, true}}));
    EXPECT_FALSE(vault.items.contains({Keychain::service, "custom.app.p1.token"}));
    EXPECT_TRUE(vault.items.contains({Keychain::service, "custom.app.p2.token"}));
    workers = &slow;
    end();
}

} // namespace
} // namespace morvex
