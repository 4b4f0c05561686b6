#include "phone/RecordCommands.h"

#include "shared/wire/Json.h"
#include "tests/phone/PhoneFixture.h"

#include <gmock/gmock.h>

namespace morvex {
namespace {

using namespace std::chrono_literals;
using testing::HasSubstr;
using testing::IsEmpty;

class RecordCommandsTest : public PhoneFixture {
  protected:
    MorvexNote fromMac(const std::string& title) {
        return {random.uuid(), title, "z Macu", clock.now(), clock.now(), 1, {}};
    }
};

TEST_F(RecordCommandsTest, WrongWordsAreToldHowItIsMeant) {
    auto refuse = [this](std::initializer_list<const char*> words) {
        start(words);
        EXPECT_EQ(ended, ExitCode::usage)
            << testing::PrintToString(std::vector<std::string>(words.begin(), words.end()));
    };
    refuse({"notes"});
    refuse({"notes", "dance"});
    refuse({"notes", "list", "x"});
    refuse({"notes", "create", "a"});
    refuse({"notes", "delete"});
    refuse({"notes", "delete", "a", "b"});
    refuse({"notes", "edit", "a"});
    refuse({"summaries", "send", "a"});
    refuse({"summaries", "create", "a", "b"});
    EXPECT_THAT(err.str(), HasSubstr("Použití: notes list | create TITLE TEXT"));
    EXPECT_THAT(err.str(), HasSubstr("Použití: summaries list | send TITLE TEXT"));
}

TEST_F(RecordCommandsTest, OfflineNeedsNoMacAndNoPairing) {
    start({"notes", "create", "Nákup", "mléko", "--offline"});
    EXPECT_EQ(ended, ExitCode::done);
    EXPECT_EQ(out.str(), "Nákup  upraveno 2027-01-15T08:00:00Z\n  mléko\n");
    start({"notes", "list"});
    EXPECT_THAT(out.str(), HasSubstr("Nákup  upraveno 2027-01-15T08:00:00Z, u Macu nepotvrzeno\n  mléko\n"));
    start({"notes", "edit", "nakup", "mouka", "Velký nákup", "--offline"});
    start({"notes", "list", "--json"});
    EXPECT_EQ(ended, ExitCode::done);
    EXPECT_EQ(records.notes()[0].title, "Velký nákup");
    EXPECT_THAT(out.str(), HasSubstr(encode(records.notes()[0]) + "\n"));
    start({"notes", "delete", "velky nakup", "--offline"});
    out.str("");
    start({"notes", "list"});
    EXPECT_EQ(out.str(), "");
    start({"summaries", "send", "Den", "shrnutí", "mail", "--offline"});
    start({"summaries", "list"});
    EXPECT_THAT(out.str(), HasSubstr("Den  napsáno 2027-01-15T08:00:00Z, u Macu nepotvrzeno\n  shrnutí\n"));
    EXPECT_EQ(err.str(), "");
}

TEST_F(RecordCommandsTest, WithoutAPairingTheNoteStandsAndTheEndSaysWhatIsMissing) {
    start({"notes", "create", "Nákup", "mléko"});
    EXPECT_EQ(ended, ExitCode::notPaired);
    EXPECT_THAT(err.str(), HasSubstr("Tady je to uložené; Mac to dostane při příštím spojení."));
    EXPECT_EQ(records.notes().size(), 1U);
}

TEST_F(RecordCommandsTest, AMacThatIsAwayGetsTheNoteNextTime) {
    paired();
    start({"notes", "create", "Nákup", "mléko", "--timeout", "5"});
    mac.logIn(false);
    run();
    pass(5s);
    EXPECT_EQ(ended, ExitCode::macUnreachable);
    EXPECT_THAT(err.str(), HasSubstr("Tady je to uložené"));

    startInSession({"status"});
    auto received = mac.take();
    ASSERT_EQ(received.size(), 1U);
    const auto* update = received[0].payload.as<MacPayload::NoteUpdate>();
    ASSERT_TRUE(update);
    EXPECT_EQ(update->note, records.notes()[0]);
    EXPECT_EQ(received[0].requestID, "note:" + update->note.id.text() + ":1");
}

TEST_F(RecordCommandsTest, ADeliveryEndsWhenTheMacHasConfirmedEverything) {
    startInSession({"notes", "create", "Nákup", "mléko"});
    auto received = mac.take();
    ASSERT_EQ(received.size(), 1U);
    const auto* update = received[0].payload.as<MacPayload::NoteUpdate>();
    ASSERT_TRUE(update);
    send({MacPayload::NoteAck{update->note.id, 1}}, "note-ack");
    EXPECT_FALSE(ended);
    EXPECT_EQ(reachMilestones(), 1U);
    EXPECT_EQ(ended, ExitCode::done);
    EXPECT_TRUE(PhoneRecords::load(folder.path(), clock, random).unconfirmed().empty());
    EXPECT_EQ(err.str(), "");
}

TEST_F(RecordCommandsTest, ANoteThatTheMacRefusedStaysUnconfirmed) {
    startInSession({"notes", "create", "Nákup", "mléko"});
    reachMilestones();
    EXPECT_FALSE(ended) << "it is offered once more";
    reachMilestones();
    EXPECT_EQ(ended, ExitCode::refused);
    EXPECT_THAT(err.str(), HasSubstr("Mac nepřevzal všechno. Nabídnu mu to při příštím spojení."));
    EXPECT_FALSE(records.unconfirmed().empty());
}

TEST_F(RecordCommandsTest, ANoteThatTheMacHasLostIsOfferedAgainInTheSameSynchronization) {
    auto old = fromMac("Nákup");
    ASSERT_TRUE(records.merge(old));
    auto own = records.edit("Nákup", "novější", {}).value();
    ASSERT_TRUE(records.confirm(own.id, 2));
    startInSession({"notes", "sync"});
    send({MacPayload::NoteUpdate{old}}, "note:1");
    reachMilestones();
    EXPECT_FALSE(ended);
    auto received = mac.take();
    ASSERT_EQ(received.size(), 2U);
    EXPECT_EQ(received[1].payload, (MacPayload{MacPayload::NoteUpdate{own}}));
    send({MacPayload::NoteAck{own.id, 2}}, "note-ack");
    reachMilestones();
    EXPECT_EQ(ended, ExitCode::done);
}

TEST_F(RecordCommandsTest, ASummaryIsOfferedUnderItsId) {
    startInSession({"summaries", "send", "Den", "shrnutí"});
    auto received = mac.take();
    ASSERT_EQ(received.size(), 1U);
    const auto* update = received[0].payload.as<MacPayload::SummaryUpdate>();
    ASSERT_TRUE(update);
    EXPECT_EQ(received[0].requestID, "summary:" + update->summary.id.text());
    send({MacPayload::SummaryAck{update->summary.id, 1}}, "summary-ack");
    reachMilestones();
    EXPECT_EQ(ended, ExitCode::done);
}

class CatchUpOfACommand : public RecordCommandsTest,
                          public testing::WithParamInterface<std::vector<const char*>> {};

TEST_P(CatchUpOfACommand, IsSavedOnceAndThenAcknowledged) {
    startInSession(GetParam());
    std::vector<MorvexNote> told;
    for (int i = 0; i < 300; ++i) {
        told.push_back(fromMac("Poznámka " + std::to_string(i)));
        send({MacPayload::NoteUpdate{told.back()}}, "note");
    }
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "records.json"));
    std::size_t acknowledged = 0;
    auto count = [&] {
        for (const auto& received : mac.take())
            if (received.payload.as<MacPayload::NoteAck>()) ++acknowledged;
    };
    count();
    EXPECT_EQ(acknowledged, 0U) << "nothing is acknowledged before it is saved";
    reachMilestones();
    count();
    EXPECT_EQ(acknowledged, told.size());
    EXPECT_EQ(PhoneRecords::load(folder.path(), clock, random).notes(), told);
}

const std::vector<std::vector<const char*>> commandsWithASession{
    {"notes", "sync"}, {"call", "mac.files.read"},      {"tasks"}, {"watch"}, {"shell"},
    {"key"},           {"approve", "--approve", "yes"},
};

INSTANTIATE_TEST_SUITE_P(EachCommand, CatchUpOfACommand, testing::ValuesIn(commandsWithASession));

TEST_F(RecordCommandsTest, ACommandThatEndsBeforeTheCatchUpDoesKeepsWhatHasCome) {
    paired();
    start({"status"});
    meet();
    const auto note = fromMac("Z Macu");
    send({MacPayload::NoteUpdate{note}}, "note:1");
    EXPECT_THAT(mac.take(), IsEmpty());
    send({MacPayload::Status{status()}}, "status");
    EXPECT_EQ(ended, ExitCode::done);
    EXPECT_EQ(PhoneRecords::load(folder.path(), clock, random).notes(), std::vector{note});
    EXPECT_EQ(mac.take().size(), 1U);
}

TEST_F(RecordCommandsTest, ASynchronizationThatCannotSaveFailsWithTheReason) {
    startInSession({"notes", "sync"});
    std::filesystem::create_directory(folder.path() / "records.json");
    send({MacPayload::NoteUpdate{fromMac("Z Macu")}}, "note:1");
    reachMilestones();
    EXPECT_EQ(ended, ExitCode::refused);
    EXPECT_THAT(err.str(), HasSubstr("Poznámky a souhrny nejde uložit: "));
}

TEST_F(RecordCommandsTest, AMacThatKeepsAcknowledgingIsNotSilent) {
    for (int i = 0; i < 10; ++i) ASSERT_TRUE(records.create("Poznámka " + std::to_string(i), "text"));
    startInSession({"notes", "sync", "--timeout", "3"});
    for (int round = 0; !ended && round < 10; ++round) {
        for (const auto& received : mac.take()) {
            pass(2s);
            const auto* update = received.payload.as<MacPayload::NoteUpdate>();
            ASSERT_TRUE(update);
            send({MacPayload::NoteAck{update->note.id, 1}}, "note-ack");
        }
        reachMilestones();
    }
    EXPECT_EQ(ended, ExitCode::done) << "after many times three seconds";
}

TEST_F(RecordCommandsTest, AnyCommandTakesAndAcknowledgesANoteOfTheMac) {
    startInSession({"watch"});
    reachMilestones();
    auto note = fromMac("Z Macu");
    send({MacPayload::NoteUpdate{note}}, "note:1");
    auto received = mac.take();
    ASSERT_EQ(received.size(), 1U);
    EXPECT_EQ(received[0].payload, (MacPayload{MacPayload::NoteAck{note.id, 1}}));
    EXPECT_EQ(PhoneRecords::load(folder.path(), clock, random).notes(), std::vector{note});
}

TEST_F(RecordCommandsTest, ANoteThatCannotBeSavedIsNotAcknowledgedUntilItIs) {
    startInSession({"watch"});
    reachMilestones();
    std::filesystem::create_directory(folder.path() / "records.json");
    auto note = fromMac("Z Macu");
    send({MacPayload::NoteUpdate{note}}, "note:1");
    EXPECT_THAT(mac.take(), IsEmpty());
    EXPECT_THAT(err.str(), HasSubstr("Poznámky a souhrny nejde uložit: "));
    std::filesystem::remove(folder.path() / "records.json");
    send({MacPayload::NoteUpdate{note}}, "note:1");
    EXPECT_EQ(mac.take().size(), 1U);
    EXPECT_EQ(PhoneRecords::load(folder.path(), clock, random).notes(), std::vector{note});
}

TEST_F(RecordCommandsTest, TheShellKeepsRecordsAndOffersTheChangedOneAtOnce) {
    ASSERT_TRUE(records.create("Dřívější", "text"));
    keyboard.interactive = true;
    startInSession({"shell"});
    for (int refused = 0; refused < 2; ++refused) reachMilestones();
    (void)mac.take();
    auto type = [this](const char* line) {
        keyboard.type(line);
        run();
        auto received = mac.take();
        reachMilestones();
        return received;
    };
    auto received = type(R"(notes create "Velký nákup" "mléko a chleba")");
    ASSERT_EQ(received.size(), 1U) << "what the Mac did not take waits for the next session";
    EXPECT_EQ(received[0].payload, (MacPayload{MacPayload::NoteUpdate{records.notes()[1]}}));
    EXPECT_EQ(records.notes()[1].body, "mléko a chleba");
    EXPECT_EQ(type(R"(notes delete "velky nakup")").size(), 1U);
    EXPECT_EQ(type("summaries send Den shrnutí").size(), 1U);
    EXPECT_EQ(type("notes sync").size(), 3U) << "all that is unconfirmed, when somebody asks for it";
    EXPECT_TRUE(type("notes \"\"").empty());
    EXPECT_THAT(err.str(), HasSubstr("Použití: notes list"));
    err.str("");
    EXPECT_TRUE(type("notes create \"\" text").empty());
    EXPECT_THAT(err.str(), HasSubstr("Chybí název nebo text.")) << "an empty word counts as a word";
    err.str("");
    EXPECT_TRUE(type("notes edit Dřívější \"\"").empty());
    EXPECT_THAT(err.str(), HasSubstr("Chybí název nebo text.")) << "also as the last one";
}

} // namespace
} // namespace morvex
