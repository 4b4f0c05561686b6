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
    /// Answers the call that closes a delivery.
    void answerCall(const std::vector<ScriptedMac::Received>& received) {
        for (const auto& told : received)
            if (told.payload.as<MacPayload::ToolCall>())
                send({MacPayload::ToolResult{true, "{}"}}, told.requestID);
    }

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
    ASSERT_EQ(received.size(), 2U) << "the offer first, then the call that closes it";
    const auto* update = received[0].payload.as<MacPayload::NoteUpdate>();
    ASSERT_TRUE(update);
    send({MacPayload::NoteAck{update->note.id, 1}}, "note-ack");
    EXPECT_FALSE(ended);
    answerCall(received);
    EXPECT_EQ(ended, ExitCode::done);
    EXPECT_TRUE(records.isConfirmed(update->note.id));
    EXPECT_TRUE(PhoneRecords::load(folder.path(), clock, random).unconfirmed().empty());
    EXPECT_EQ(err.str(), "");
}

TEST_F(RecordCommandsTest, ANoteThatTheMacRefusedStaysUnconfirmed) {
    startInSession({"notes", "create", "Nákup", "mléko"});
    answerCall(mac.take());
    EXPECT_FALSE(ended) << "it is offered once more";
    answerCall(mac.take());
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
    answerCall(mac.take());
    EXPECT_FALSE(ended);
    auto received = mac.take();
    ASSERT_EQ(received.size(), 3U);
    EXPECT_EQ(received[0].payload, (MacPayload{MacPayload::NoteUpdate{own}}));
    send({MacPayload::NoteAck{own.id, 2}}, "note-ack");
    answerCall(received);
    EXPECT_EQ(ended, ExitCode::done);
}

TEST_F(RecordCommandsTest, WhatTheMacDidNotNameBeforeItsFirstResultIsOfferedAgainOnceASession) {
    const auto lost = fromMac("Ztracená");
    const auto named = fromMac("Zůstala");
    ASSERT_TRUE(records.merge(lost));
    ASSERT_TRUE(records.merge(named));
    keyboard.interactive = true;
    startInSession({"shell"});
    send({MacPayload::NoteUpdate{named}}, "note:1");
    auto call = [this] {
        keyboard.type("call mac.status");
        run();
        answerCall(mac.take());
        return mac.take();
    };
    auto offered = call();
    ASSERT_EQ(offered.size(), 1U);
    EXPECT_EQ(offered[0].payload, (MacPayload{MacPayload::NoteUpdate{lost}}));
    EXPECT_EQ(PhoneRecords::load(folder.path(), clock, random).unconfirmed().size(), 1U);
    EXPECT_THAT(call(), IsEmpty());
}

TEST_F(RecordCommandsTest, ASummaryIsOfferedUnderItsId) {
    startInSession({"summaries", "send", "Den", "shrnutí"});
    auto received = mac.take();
    ASSERT_EQ(received.size(), 2U);
    const auto* update = received[0].payload.as<MacPayload::SummaryUpdate>();
    ASSERT_TRUE(update);
    EXPECT_EQ(received[0].requestID, "summary:" + update->summary.id.text());
    send({MacPayload::SummaryAck{update->summary.id, 1}}, "summary-ack");
    answerCall(received);
    EXPECT_EQ(ended, ExitCode::done);
}

TEST_F(RecordCommandsTest, AReleaseThatFailedIsTriedAgainWithWhateverComes) {
    paired();
    start({"notes", "list"});
    auto session =
        PhoneSession::create(identita, mac.asPeer(), {{executor, clock, sockets}, random}, inbox).value();
    RecordSync sync(records, *session, terminal);
    sync.hold();
    const auto note = fromMac("Z Macu");
    ASSERT_TRUE(executor.run(sync.heard(SecureLink::Zprava{{MacPayload::NoteUpdate{note}}, "note:1"})));
    std::filesystem::create_directory(folder.path() / "records.json");
    EXPECT_FALSE(*executor.run(sync.release()));
    std::filesystem::remove(folder.path() / "records.json");
    ASSERT_TRUE(executor.run(sync.heard(SecureLink::Zprava{{MacPayload::NoteAck{note.id, 1}}, "note-ack"})));
    EXPECT_EQ(PhoneRecords::load(folder.path(), clock, random).notes(), std::vector{note});
}

TEST_F(RecordCommandsTest, ASynchronizationTakesTheMacsNotesSavesOnceAndThenAcknowledges) {
    startInSession({"notes", "sync"});
    auto first = fromMac("první");
    auto second = fromMac("druhá");
    send({MacPayload::NoteUpdate{first}}, "note:1");
    send({MacPayload::NoteUpdate{second}}, "note:2");
    auto received = mac.take();
    ASSERT_EQ(received.size(), 1U) << "nothing is acknowledged before it is saved";
    EXPECT_TRUE(PhoneRecords::load(folder.path(), clock, random).notes().empty());
    answerCall(received);
    EXPECT_EQ(ended, ExitCode::done);
    EXPECT_EQ(PhoneRecords::load(folder.path(), clock, random).notes(), (std::vector{first, second}));
    auto acknowledged = mac.take();
    ASSERT_EQ(acknowledged.size(), 2U);
    EXPECT_EQ(acknowledged[0].payload, (MacPayload{MacPayload::NoteAck{first.id, 1}}));
    EXPECT_EQ(acknowledged[0].requestID, "note-ack:" + first.id.text());
}

TEST_F(RecordCommandsTest, AnyCommandTakesAndAcknowledgesANoteOfTheMac) {
    startInSession({"watch"});
    auto note = fromMac("Z Macu");
    send({MacPayload::NoteUpdate{note}}, "note:1");
    auto received = mac.take();
    ASSERT_EQ(received.size(), 1U);
    EXPECT_EQ(received[0].payload, (MacPayload{MacPayload::NoteAck{note.id, 1}}));
    EXPECT_EQ(PhoneRecords::load(folder.path(), clock, random).notes(), std::vector{note});
}

TEST_F(RecordCommandsTest, ANoteThatCannotBeSavedIsNotAcknowledgedUntilItIs) {
    startInSession({"watch"});
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

TEST_F(RecordCommandsTest, TheShellKeepsRecordsAndOffersThemAtOnce) {
    keyboard.interactive = true;
    startInSession({"shell"});
    auto type = [this](const char* line) {
        keyboard.type(line);
        run();
        return mac.take();
    };
    EXPECT_EQ(type(R"(notes create "Velký nákup" "mléko a chleba")").size(), 1U);
    EXPECT_EQ(records.notes()[0].body, "mléko a chleba");
    EXPECT_EQ(type(R"(notes delete "velky nakup")").size(), 1U);
    EXPECT_EQ(type("summaries send Den shrnutí").size(), 2U) << "everything unconfirmed goes out";
    EXPECT_TRUE(type("notes \"\"").empty());
    EXPECT_THAT(err.str(), HasSubstr("Použití: notes list"));
    err.str("");
    EXPECT_TRUE(type("notes create \"\" text").empty());
    EXPECT_THAT(err.str(), HasSubstr("Chybí název nebo text.")) << "an empty word counts as a word";
}

} // namespace
} // namespace morvex
