#include "shared/wire/Json.h"
#include "tests/support/CompanionHarness.h"

#include <fstream>

namespace morvex {
namespace {

using namespace std::chrono_literals;

class NotesSyncTest : public CompanionHarness {
  protected:
    template <class Case> struct Told {
        Case message;
        std::string requestID;
    };

    /// The messages of one kind among what came to the phone since the last call.
    template <class Case> std::vector<Told<Case>> take() {
        executor.runUntilIdle();
        std::vector<Told<Case>> told;
        for (const auto& received : phone.take())
            if (const auto* message = received.payload.as<Case>())
                told.push_back({*message, received.requestID});
        return told;
    }

    std::vector<std::string> takeUpdates() {
        std::vector<std::string> titles;
        for (const auto& told : take<MacPayload::NoteUpdate>()) titles.push_back(told.message.note.title);
        return titles;
    }

    MorvexNote note(const std::string& title, std::uint64_t revision = 1) {
        return {random.uuid(), title, "obsah", clock.now(), clock.now(), revision, {}};
    }

    MorvexSummary summary(const std::string& title) {
        return {random.uuid(), title, "shrnutí", clock.now(), clock.now() - 24h, clock.now(), {"mail"}, 3};
    }

    void breakSaves() const {
        auto data = temporary.path() / ".local" / "share";
        std::filesystem::create_directories(data);
        std::ofstream(data / "Morvex") << "in the way";
    }

    void mendSaves() const { std::filesystem::remove(temporary.path() / ".local/share/Morvex"); }

    /// A session on a new connection whose relay takes nothing more once the session stands.
    std::shared_ptr<ScriptedSocket> stallCatchUp() {
        auto socket = connectAgain();
        socket->holdSends();
        executor.runUntilIdle();
        return socket;
    }

    using Titles = std::vector<std::string>;
};

TEST_F(NotesSyncTest, ANoteThatIsChangedHereGoesOutUnderItsIdAndRevision) {
    startSecured();
    EXPECT_EQ(call("mac.notes.create", R"({"title":"Nákup","body":"mléko"})").json,
              R"({"created":true,"title":"Nákup"})");
    auto created = features->records.poznamky().notes()[0];
    ASSERT_TRUE(ended(features->records.poznamky().upravit("Nákup", {}, "mouka")));
    ASSERT_TRUE(ended(features->records.poznamky().smazat("Nákup")));
    auto told = take<MacPayload::NoteUpdate>();
    ASSERT_EQ(told.size(), 2U);
    EXPECT_EQ(told[0].requestID, "note:" + created.id.text() + ":2");
    EXPECT_EQ(told[0].message.note.body, "mouka");
    EXPECT_EQ(told[1].requestID, "note:" + created.id.text() + ":3");
    EXPECT_TRUE(told[1].message.note.deletedAt);
}

TEST_F(NotesSyncTest, ANoteThatAToolCreatesIsSentBesideTheAnswer) {
    startSecured();
    phone.call("mac.notes.create", R"({"title":"Nákup","body":"mléko"})", "r");
    auto told = take<MacPayload::NoteUpdate>();
    ASSERT_EQ(told.size(), 1U);
    EXPECT_EQ(told[0].requestID, "note:" + told[0].message.note.id.text() + ":1");
    EXPECT_EQ(told[0].message.note.title, "Nákup");
}

TEST_F(NotesSyncTest, ANoteOfThePhoneIsSavedAndThenAcknowledgedAndNotSentBack) {
    startSecured();
    auto incoming = note("Z telefonu", 18'446'744'073'709'551'615U);
    phone.send({MacPayload::NoteUpdate{incoming}}, "n");
    executor.runUntilIdle();
    auto received = phone.take();
    ASSERT_EQ(received.size(), 1U);
    EXPECT_EQ(received[0].payload.value,
              (MacPayload{MacPayload::NoteAck{incoming.id, incoming.revision}}.value));
    EXPECT_EQ(received[0].requestID, "note-ack:" + incoming.id.text());
    EXPECT_EQ(features->records.poznamky().notes(), std::vector{incoming});
    end();
    start();
    EXPECT_EQ(features->records.poznamky().notes(), std::vector{incoming});
}

TEST_F(NotesSyncTest, AnOldVersionIsAcknowledgedToo) {
    startSecured();
    auto stored = ended(features->records.poznamky().vytvorit("Nákup", "mléko")).value();
    (void)phone.take();
    stored.revision = 0;
    stored.title = "starší";
    phone.send({MacPayload::NoteUpdate{stored}}, "n");
    auto told = take<MacPayload::NoteAck>();
    ASSERT_EQ(told.size(), 1U);
    EXPECT_EQ(told[0].message.revision, 0U);
    EXPECT_EQ(features->records.poznamky().notes()[0].title, "Nákup");
}

TEST_F(NotesSyncTest, ARefusedMergeGetsNoAcknowledgement) {
    startSecured();
    breakSaves();
    auto incoming = note("Z telefonu");
    phone.send({MacPayload::NoteUpdate{incoming}}, "n");
    phone.send({MacPayload::SummaryUpdate{summary("Týden")}}, "s");
    executor.runUntilIdle();
    EXPECT_TRUE(phone.take().empty());
    EXPECT_TRUE(features->records.poznamky().problem());
    EXPECT_TRUE(features->records.souhrny().problem());
    EXPECT_EQ(trouble(), "none");

    mendSaves();
    phone.send({MacPayload::NoteUpdate{incoming}}, "n");
    EXPECT_EQ(take<MacPayload::NoteAck>().size(), 1U);
    EXPECT_FALSE(features->records.poznamky().problem());
}

TEST_F(NotesSyncTest, AnAcknowledgementWhoseSendFailsIsLostWithoutAWord) {
    auto socket = startSecured();
    socket->refusals = 2;
    phone.send({MacPayload::NoteUpdate{note("Z telefonu")}}, "n");
    phone.send({MacPayload::SummaryUpdate{summary("Týden")}}, "s");
    executor.runUntilIdle();
    EXPECT_EQ(socket->refusals, 0);
    EXPECT_TRUE(phone.take().empty());
    EXPECT_EQ(trouble(), "none");
    EXPECT_EQ(features->records.poznamky().notes().size(), 1U);
    EXPECT_EQ(features->records.souhrny().summaries().size(), 1U);
}

TEST_F(NotesSyncTest, BetweenTwoRefusedMergesOtherWorkGoesOn) {
    startSecured();
    breakSaves();
    std::optional<bool> wasAlone;
    const auto connection = features->records.poznamky().onChange(
        [&] { executor.post([&] { wasAlone = !features->records.souhrny().problem(); }); });
    phone.send({MacPayload::NoteUpdate{note("Z telefonu")}}, "n");
    phone.send({MacPayload::SummaryUpdate{summary("Týden")}}, "s");
    executor.runUntilIdle();
    EXPECT_TRUE(features->records.souhrny().problem());
    EXPECT_EQ(wasAlone, true) << "it ran before the second one";
}

TEST_F(NotesSyncTest, ASummaryIsKeptAndAcknowledgedEachTimeAndNeverSent) {
    startSecured();
    auto incoming = summary("Týden");
    for (int i = 0; i < 2; ++i) {
        phone.send({MacPayload::SummaryUpdate{incoming}}, "s");
        executor.runUntilIdle();
        auto received = phone.take();
        ASSERT_EQ(received.size(), 1U);
        EXPECT_EQ(received[0].payload.value, (MacPayload{MacPayload::SummaryAck{incoming.id, 3}}.value));
        EXPECT_EQ(received[0].requestID, "summary-ack:" + incoming.id.text());
        incoming.body = "stejná revize, jiný text";
    }
    EXPECT_EQ(features->records.souhrny().summaries()[0].body, "shrnutí");
    (void)connectAgain();
    EXPECT_TRUE(take<MacPayload::SummaryUpdate>().empty());
}

TEST_F(NotesSyncTest, ANoteAckIsIgnored) {
    startSecured();
    auto created = ended(features->records.poznamky().vytvorit("Nákup", "mléko")).value();
    EXPECT_EQ(takeUpdates(), Titles{"Nákup"});
    phone.send({MacPayload::NoteAck{created.id, created.revision}}, "a");
    phone.send({MacPayload::SummaryAck{created.id, created.revision}}, "a");
    executor.runUntilIdle();
    EXPECT_TRUE(phone.take().empty());
    (void)connectAgain();
    EXPECT_EQ(takeUpdates(), Titles{"Nákup"}) << "sent again although it was acknowledged";
}

TEST_F(NotesSyncTest, AllNotesWithTombstonesGoOutAfterTheStatusEachTimeTheLinkIsReady) {
    startSecured();
    ASSERT_TRUE(ended(features->records.poznamky().vytvorit("první", "a")));
    ASSERT_TRUE(ended(features->records.poznamky().vytvorit("druhá", "b")));
    ASSERT_TRUE(ended(features->records.poznamky().smazat("první")));
    executor.runUntilIdle();
    for (int i = 0; i < 2; ++i) {
        (void)phone.take();
        (void)connectAgain();
        executor.runUntilIdle();
        auto received = phone.take();
        ASSERT_EQ(received.size(), 3U);
        EXPECT_TRUE(received[0].payload.as<MacPayload::Status>());
        const auto* first = received[1].payload.as<MacPayload::NoteUpdate>();
        const auto* second = received[2].payload.as<MacPayload::NoteUpdate>();
        ASSERT_TRUE(first && second);
        EXPECT_EQ(first->note.title, "první");
        EXPECT_TRUE(first->note.deletedAt);
        EXPECT_EQ(received[1].requestID, "note:" + first->note.id.text() + ":2");
        EXPECT_EQ(second->note.title, "druhá");
    }
}

TEST_F(NotesSyncTest, WithTheLinkDownANoteWaitsForTheNextReadyAndGoesOutWithAllOthers) {
    startSecured();
    ASSERT_TRUE(ended(features->records.poznamky().vytvorit("první", "a")));
    EXPECT_EQ(takeUpdates(), Titles{"první"});
    companion->odpojit();
    executor.runUntilIdle();
    ASSERT_TRUE(ended(features->records.poznamky().vytvorit("druhá", "b")));
    executor.runUntilIdle();
    EXPECT_TRUE(phone.take().empty());
    (void)connectAgain();
    EXPECT_EQ(takeUpdates(), (Titles{"první", "druhá"}));
}

TEST_F(NotesSyncTest, EachSendOfTheCatchUpIsAwaitedAndCallsWaitForItsEnd) {
    startSecured();
    for (const char* title : {"první", "druhá", "třetí"})
        ASSERT_TRUE(ended(features->records.poznamky().vytvorit(title, "a")));
    executor.runUntilIdle();
    auto socket = stallCatchUp();
    (void)phone.take();
    phone.call("mac.status", "{}", "r");
    executor.runUntilIdle();
    EXPECT_TRUE(phone.take().empty()) << "one send waits, and nothing is sent beside it";
    socket->takeSends();
    executor.runUntilIdle();
    auto received = phone.take();
    ASSERT_EQ(received.size(), 4U);
    EXPECT_TRUE(received[3].payload.as<MacPayload::ToolResult>());
}

TEST_F(NotesSyncTest, ASendThatFailsInTheCatchUpOnlyMovesOnToTheNextRecord) {
    startSecured();
    for (const char* title : {"první", "druhá", "třetí"})
        ASSERT_TRUE(ended(features->records.poznamky().vytvorit(title, "a")));
    executor.runUntilIdle();
    auto socket = stallCatchUp();
    socket->answerSends({});
    EXPECT_EQ(takeUpdates(), Titles{"první"}) << "behind the status";
    socket->answerSends(fail(NetworkError{Sentence("plno")}));
    EXPECT_EQ(takeUpdates(), Titles{"druhá"});
    socket->takeSends();
    EXPECT_EQ(takeUpdates(), Titles{"třetí"});
    EXPECT_EQ(trouble(), "none");
}

TEST_F(NotesSyncTest, ANoteTooLongForTheWayIsPassedOverAndTheLinkStays) {
    startSecured();
    ASSERT_TRUE(ended(features->records.poznamky().vytvorit("první", "a")));
    ASSERT_TRUE(ended(features->records.poznamky().vytvorit("dlouhá", std::string(3'200'000, 'x'))));
    ASSERT_TRUE(ended(features->records.poznamky().vytvorit("třetí", "c")));
    EXPECT_EQ(takeUpdates(), (Titles{"první", "třetí"}));
    EXPECT_EQ(trouble(), "Poznámka „dlouhá“ je na přenos příliš dlouhá, telefon ji nedostane.");
    (void)connectAgain();
    EXPECT_EQ(takeUpdates(), (Titles{"první", "třetí"}));
    EXPECT_EQ(trouble(), "none") << "once is enough";
    ASSERT_TRUE(ended(features->records.poznamky().upravit("dlouhá", {}, std::string(3'200'000, 'y'))));
    executor.runUntilIdle();
    EXPECT_NE(trouble(), "none") << "another version";
    EXPECT_EQ(features->records.poznamky().vsechny().size(), 3U);
    auto answer = call("mac.notes.delete", R"({"title":"dlouhá"})");
    EXPECT_TRUE(answer.ok);
}

TEST_F(NotesSyncTest, AnAnswerTooLongForTheWayIsRefusedInWords) {
    startSecured();
    for (const char* title : {"první", "druhá"})
        ASSERT_TRUE(ended(features->records.poznamky().vytvorit(title, std::string(1'600'000, 'x'))));
    executor.runUntilIdle();
    (void)phone.take();
    auto answer = call("mac.notes.search", R"({"query":"x"})");
    EXPECT_FALSE(answer.ok);
    EXPECT_EQ(answer.json, R"({"error":"Výsledek je na přenos příliš dlouhý."})");
    EXPECT_EQ(answer.requestID, "req-1");
    EXPECT_TRUE(call("mac.notes.search", R"({"query":"druhá"})").ok);
}

TEST_F(NotesSyncTest, AChangeDuringTheCatchUpMayOvertakeIt) {
    startSecured();
    for (const char* title : {"první", "druhá"})
        ASSERT_TRUE(ended(features->records.poznamky().vytvorit(title, "a")));
    executor.runUntilIdle();
    auto socket = stallCatchUp();
    ASSERT_TRUE(ended(features->records.poznamky().upravit("druhá", {}, "změněno")));
    ASSERT_TRUE(ended(features->records.poznamky().vytvorit("třetí", "c")));
    executor.runUntilIdle();
    socket->takeSends();
    auto told = take<MacPayload::NoteUpdate>();
    std::map<std::string, std::string> last;
    for (const auto& one : told) last[one.message.note.title] = one.message.note.body;
    EXPECT_EQ(last,
              (std::map<std::string, std::string>{{"první", "a"}, {"druhá", "změněno"}, {"třetí", "c"}}));
}

TEST_F(NotesSyncTest, ALinkThatGoesEndsTheCatchUpAndTheNextOneBeginsAnew) {
    startSecured();
    for (int i = 0; i < 5; ++i)
        ASSERT_TRUE(ended(features->records.poznamky().vytvorit("p" + std::to_string(i), "a")));
    executor.runUntilIdle();
    (void)stallCatchUp();
    (void)connectAgain();
    EXPECT_EQ(takeUpdates().size(), 5U);
    EXPECT_EQ(trouble(), "none");
}

TEST_F(NotesSyncTest, OnceTheLinkIsTakenDownNothingMoreOfTheCatchUpIsTried) {
    startSecured();
    for (int i = 0; i < 5; ++i)
        ASSERT_TRUE(ended(features->records.poznamky().vytvorit("p" + std::to_string(i), "a")));
    executor.runUntilIdle();
    auto socket = stallCatchUp();
    socket->answerSends({});
    EXPECT_EQ(takeUpdates(), Titles{"p0"});
    companion->odpojit();
    socket->answerSends({});
    EXPECT_EQ(takeUpdates(), Titles());
    socket->takeSends();
    EXPECT_EQ(takeUpdates(), Titles());
    EXPECT_EQ(trouble(), "none");
}

TEST_F(NotesSyncTest, ACatchUpWhoseLinkGoesWhileItWaitsForASaveSendsNothing) {
    ManualExecutor saves;
    records = &saves;
    startSecured();
    phone.send({MacPayload::NoteUpdate{note("Z telefonu")}}, "n");
    executor.runUntilIdle();
    (void)connectAgain();
    executor.runUntilIdle();
    (void)connectAgain();
    while (executor.runUntilIdle() + saves.runUntilIdle() > 0) continue;
    EXPECT_EQ(takeUpdates(), Titles{"Z telefonu"}) << "of the link that is there, once";
    end();
}

TEST_F(NotesSyncTest, NotesAreOffTheOfferWithTheirSwitchButStayInStep) {
    startSecured();
    companion->integrations().turnOff(Integration::notes);
    EXPECT_EQ(call("mac.notes.search", "{}").json,
              R"({"error":"Nástroj mac.notes.search tenhle Mac nemá."})");
    phone.send({MacPayload::NoteUpdate{note("Z telefonu")}}, "n");
    EXPECT_EQ(take<MacPayload::NoteAck>().size(), 1U);
}

TEST_F(NotesSyncTest, AnEndInTheMiddleOfACatchUpIsClean) {
    startSecured();
    for (int i = 0; i < 5; ++i)
        ASSERT_TRUE(ended(features->records.poznamky().vytvorit("p" + std::to_string(i), "a")));
    (void)stallCatchUp();
    end();
}

} // namespace
} // namespace morvex
