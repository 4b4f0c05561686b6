#include "tests/support/CompanionHarness.h"

#include <fstream>

namespace morvex {
namespace {

using namespace std::chrono_literals;
using Texts = std::vector<std::string>;

/// Records of the phone that come faster than the disk, which writes when the test lets it.
class GatheredRecordsTest : public CompanionHarness {
  protected:
    GatheredRecordsTest() { records = &disk; }

    ~GatheredRecordsTest() override {
        if (companion) end();
    }

    MorvexNote send(const std::string& title) {
        MorvexNote note{random.uuid(), title, "obsah", clock.now(), clock.now(), 1, {}};
        names[note.id] = title;
        phone.send({MacPayload::NoteUpdate{note}}, "n");
        executor.runUntilIdle();
        return note;
    }

    /// What the phone got since the last call, acknowledgements by the title of their note.
    Texts take() {
        executor.runUntilIdle();
        Texts told;
        for (const auto& received : phone.take()) {
            const auto* ack = received.payload.as<MacPayload::NoteAck>();
            if (ack) told.push_back(names[ack->id]);
            if (received.payload.as<MacPayload::SummaryAck>()) told.emplace_back("summary");
            if (received.payload.as<MacPayload::ToolResult>()) told.emplace_back("answer");
        }
        return told;
    }

    /// One save.
    Texts write() {
        executor.runUntilIdle();
        disk.runUntilIdle();
        return take();
    }

    void breakSaves() const {
        std::filesystem::create_directories(temporary.path() / ".local/share");
        std::ofstream(temporary.path() / ".local/share/Morvex") << "in the way";
    }

    void mendSaves() const { std::filesystem::remove(temporary.path() / ".local/share/Morvex"); }

    ManualExecutor disk;
    std::map<Uuid, std::string> names;
};

TEST_F(GatheredRecordsTest, ARecordIsAcknowledgedWhenTheSaveThatHoldsItHasEnded) {
    startSecured();
    send("a");
    send("b");
    EXPECT_EQ(take(), Texts());
    EXPECT_EQ(write(), Texts{"a"});
    EXPECT_EQ(write(), Texts{"b"});
}

TEST_F(GatheredRecordsTest, RecordsThatComeDuringASaveShareTheNextAndAreAcknowledgedInTheirOrder) {
    startSecured();
    for (const char* title : {"a", "b", "c", "d"}) send(title);
    EXPECT_EQ(write(), Texts{"a"});
    EXPECT_EQ(write(), (Texts{"b", "c", "d"}));
    EXPECT_EQ(disk.runUntilIdle(), 0);
}

TEST_F(GatheredRecordsTest, AnOldVersionIsAcknowledgedBehindTheRecordsThatCameBefore) {
    startSecured();
    const auto known = send("known");
    EXPECT_EQ(write(), Texts{"known"});
    send("a");
    phone.send({MacPayload::NoteUpdate{known}}, "n");
    EXPECT_EQ(take(), Texts());
    EXPECT_EQ(write(), (Texts{"a", "known"}));
}

TEST_F(GatheredRecordsTest, NotesAndSummariesKeepTheirOrderToo) {
    startSecured();
    send("a");
    phone.send({MacPayload::SummaryUpdate{
                   {random.uuid(), "Den", "x", clock.now(), clock.now(), clock.now(), {}, 1}}},
               "s");
    EXPECT_EQ(write(), (Texts{"a", "summary"}));
}

TEST_F(GatheredRecordsTest, ACallBeginsWhenTheRecordsBeforeItAreAcknowledged) {
    startSecured();
    send("a");
    send("b");
    phone.call("mac.notes.search", R"({"query":""})", "r");
    EXPECT_EQ(take(), Texts());
    EXPECT_EQ(write(), Texts{"a"});
    EXPECT_EQ(write(), (Texts{"b", "answer"}));
}

TEST_F(GatheredRecordsTest, ACatchUpTellsOfNoNoteThatIsNotOnTheDisk) {
    startSecured();
    send("a");
    (void)connectAgain();
    executor.runUntilIdle();
    for (const auto& received : phone.take()) EXPECT_FALSE(received.payload.as<MacPayload::NoteUpdate>());
    disk.runUntilIdle();
    executor.runUntilIdle();
    std::size_t told = 0;
    for (const auto& received : phone.take()) told += received.payload.as<MacPayload::NoteUpdate>() ? 1U : 0U;
    EXPECT_EQ(told, 1U);
}

/// A message of the session before, which waited behind a call, may be handled beside the catch-up.
TEST_F(GatheredRecordsTest, ACatchUpTellsOfNoVersionThatCameMeanwhileAndIsNotOnTheDisk) {
    ManualExecutor slow;
    workers = &slow;
    auto socket = startSecured();
    (void)allowFolder("Projekty");
    send("first");
    send("second");
    auto last = send("last");
    for (int save = 0; save < 2; ++save) (void)write();
    phone.call("mac.files.search", "{}", "call");
    ++last.revision;
    last.updatedAt += 1s;
    phone.send({MacPayload::NoteUpdate{last}}, "n");
    executor.runUntilIdle();

    auto next = sockets.layOut();
    socket->breakWith("přerušeno");
    executor.runUntilIdle();
    clock.advance(2s);
    executor.runUntilIdle();
    phone.attach(next, *mac);
    phone.logIn();
    executor.runUntilIdle();
    next->holdSends();
    phone.exchangeHellos();
    executor.runUntilIdle();
    next->answerSends({}); // of the status; the first note follows
    executor.runUntilIdle();
    while (slow.runUntilIdle() + executor.runUntilIdle() > 0) continue;
    next->answerSends({}); // of the first note and of the old call's result
    executor.runUntilIdle();
    ASSERT_EQ(features->records.poznamky().note(last.id)->revision, last.revision);
    next->takeSends();
    executor.runUntilIdle();
    Texts told;
    for (const auto& received : phone.take())
        if (const auto* update = received.payload.as<MacPayload::NoteUpdate>())
            told.push_back(names[update->note.id]);
    EXPECT_EQ(told, (Texts{"first", "second"}));
    EXPECT_EQ(write(), Texts{"last"});
    end();
}

TEST_F(GatheredRecordsTest, AfterAFailedSaveAsManyRecordsAreSavedOneByOne) {
    startSecured();
    breakSaves();
    for (const char* title : {"a", "b", "c"}) send(title);
    EXPECT_EQ(write(), Texts());
    EXPECT_EQ(write(), Texts());
    EXPECT_TRUE(features->records.poznamky().vsechny().empty());
    mendSaves();
    for (const char* title : {"a", "b", "c", "d", "e", "f"}) send(title);
    for (const char* title : {"a", "b", "c", "d"}) EXPECT_EQ(write(), Texts{title});
    EXPECT_EQ(write(), (Texts{"e", "f"}));
}

TEST_F(GatheredRecordsTest, OnlySoManyRecordsWaitForADiskThatHangs) {
    startSecured();
    for (std::size_t i = 0; i < NotesSync::mostWaiting + 3; ++i) send(std::to_string(i));
    EXPECT_EQ(features->records.poznamky().ids().size(), NotesSync::mostWaiting);
    (void)write();
    (void)write();
    EXPECT_EQ(features->records.poznamky().ids().size(), NotesSync::mostWaiting + 3);
}

TEST_F(GatheredRecordsTest, TheEndOfTheProgramWaitsUntilEverythingIsSaved) {
    startSecured();
    send("a");
    send("b");
    TaskScope ending(executor);
    ending.spawn(companion->shutDown());
    executor.runUntilIdle();
    EXPECT_EQ(ending.live(), 1) << "the disk is still at work";
    while (executor.runUntilIdle() + disk.runUntilIdle() > 0) continue;
    EXPECT_EQ(ending.live(), 0);
    companion.reset();
    start();
    EXPECT_EQ(features->records.poznamky().notes().size(), 2U);
}

TEST_F(GatheredRecordsTest, ATaskIsAcceptedAndToldWhenItIsOnTheDisk) {
    startSecured();
    features->agents.stav().codex = AgentStatus{true, "1.0", "/usr/bin/codex", {}};
    allowFolder("Projekty");
    (void)phone.take();
    phone.call("mac.codex.run", R"({"instruction":"Oprav testy"})", "r");
    EXPECT_EQ(take(), Texts());
    EXPECT_EQ(write(), Texts{"answer"});
}

} // namespace
} // namespace morvex
