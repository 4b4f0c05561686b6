#include "phone/RecordSync.h"

#include "phone/PhoneArchive.h"
#include "platform/memory/ManualClock.h"
#include "platform/memory/ManualExecutor.h"
#include "platform/memory/ScriptedRandom.h"
#include "shared-apple/MessageTooLong.h"
#include "shared/base/FrameLimit.h"
#include "shared/wire/Json.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <fstream>
#include <sstream>

namespace morvex {
namespace {

using testing::IsEmpty;

/// A Mac that remembers what the phone sent.
class WrittenDown final : public Outbox {
  public:
    Task<Result<void>> trySend(MacPayload payload, std::string) override {
        if (encode(payload).size() > longest) co_return fail(MessageTooLong{});
        sent.push_back(std::move(payload));
        co_return Result<void>{};
    }

    Task<std::string> sendMilestone() override {
        milestones.push_back("milestone:" + std::to_string(milestones.size()));
        co_return milestones.back();
    }

    std::vector<MacPayload> take() { return std::exchange(sent, {}); }

    std::size_t longest = frameLimit;
    std::vector<MacPayload> sent;
    std::vector<std::string> milestones;
};

class RecordSyncTest : public testing::Test {
  protected:
    void hear(Inbox::Event event) { ASSERT_TRUE(executor.run(sync.heard(std::move(event)))); }

    void beginSession() { hear(SecureLink::Stav{{MacAvailability::Pripraveny{}}}); }

    void tell(MorvexNote note) {
        hear(SecureLink::Zprava{{MacPayload::NoteUpdate{std::move(note)}}, "note"});
    }

    void result(const std::string& requestID) {
        hear(SecureLink::Zprava{{MacPayload::ToolResult{true, "{}"}}, requestID});
    }

    void reachMilestone() { result(outbox.milestones.back()); }

    /// Acknowledges what was offered. Gives how much.
    std::size_t acknowledgeAll() {
        auto offers = outbox.take();
        for (const auto& offer : offers) {
            const auto& note = offer.as<MacPayload::NoteUpdate>()->note;
            hear(SecureLink::Zprava{{MacPayload::NoteAck{note.id, note.revision}}, "note-ack"});
        }
        return offers.size();
    }

    /// Of a new session in which the Mac takes everything: how many offers each round had.
    std::vector<std::size_t> roundsOfBacklog() {
        beginSession();
        std::vector<std::size_t> rounds;
        while (!sync.isSettled() && rounds.size() < 100) {
            rounds.push_back(acknowledgeAll());
            reachMilestone();
        }
        return rounds;
    }

    void createNotes(int count) {
        for (int i = 0; i < count; ++i) ASSERT_TRUE(records.create("Poznámka " + std::to_string(i), "text"));
    }

    MorvexNote fromMac(const std::string& title) {
        return {random.uuid(), title, "z Macu", clock.now(), clock.now(), 1, {}};
    }

    [[nodiscard]] PhoneRecords reloaded() { return PhoneRecords::load(folder.path(), clock, random); }

    ManualExecutor executor;
    ManualClock clock;
    ScriptedRandom random;
    TemporaryFolder folder;
    PhoneRecords records = reloaded();
    std::ostringstream out;
    std::ostringstream err;
    Terminal terminal{{out}, {err}};
    WrittenDown outbox;
    RecordSync sync{records, outbox, terminal};
};

TEST_F(RecordSyncTest, ABacklogIsNeverSentAtOnceAndGoesOnWithEachMilestone) {
    createNotes(20);
    EXPECT_EQ(roundsOfBacklog(), (std::vector<std::size_t>{8, 12}))
        << "the Mac is busy with its own at first";
    EXPECT_THAT(records.unconfirmed(), IsEmpty());
}

TEST_F(RecordSyncTest, ARoundHasAtMost512Offers) {
    PhoneArchive archive;
    for (int i = 0; i < 8 + 512 + 3; ++i) {
        archive.notes.push_back(fromMac("Poznámka"));
        archive.unconfirmed.push_back(archive.notes.back().id);
    }
    std::ofstream(folder.path() / "records.json") << encode(archive);
    auto many = reloaded();
    RecordSync other(many, outbox, terminal);
    ASSERT_TRUE(executor.run(other.heard(SecureLink::Stav{{MacAvailability::Pripraveny{}}})));
    EXPECT_EQ(outbox.take().size(), 8U);
    const SecureLink::Zprava milestone{{MacPayload::ToolResult{true, "{}"}}, outbox.milestones.back()};
    ASSERT_TRUE(executor.run(other.heard(milestone)));
    EXPECT_EQ(outbox.take().size(), 512U);
}

TEST_F(RecordSyncTest, ARoundEndsWithTheOfferThatMakesItAMebibyteOfText) {
    createNotes(8);
    const std::string half(512 * 1024, 'x');
    for (int i = 0; i < 5; ++i) ASSERT_TRUE(records.create("Dlouhá", half));
    // The records are offered by their ids, which are drawn in order.
    EXPECT_EQ(roundsOfBacklog(), (std::vector<std::size_t>{8, 2, 2, 1}));
}

TEST_F(RecordSyncTest, RefusalsDoNotHoldTheRestBack) {
    createNotes(10);
    beginSession();
    EXPECT_EQ(outbox.take().size(), 8U);
    reachMilestone();
    EXPECT_EQ(acknowledgeAll(), 2U);
    EXPECT_EQ(records.unconfirmed().size(), 8U);
}

TEST_F(RecordSyncTest, WhatNoFrameCanTakeIsToldOnceAndTheRestGoesOn) {
    createNotes(1);
    ASSERT_TRUE(records.create("Dlouhá", std::string(2'000, 'x')));
    ASSERT_TRUE(records.summarize("Den", std::string(2'000, 'x'), {}));
    createNotes(1);
    outbox.longest = 1'000;
    for (int session = 0; session < 2; ++session) {
        beginSession();
        while (!sync.isSettled()) {
            acknowledgeAll();
            reachMilestone();
        }
    }
    EXPECT_EQ(records.unconfirmed().size(), 2U) << "they are kept";
    EXPECT_EQ(err.str(), "morvex-phone: Poznámka „Dlouhá“ je na přenos příliš dlouhá. Zůstane jen tady.\n"
                         "morvex-phone: Souhrn „Den“ je na přenos příliš dlouhý. Zůstane jen tady.\n");
}

TEST_F(RecordSyncTest, WhatWasRefusedIsOfferedASecondTimeAndAgainAtTheNextSession) {
    createNotes(1);
    const MacPayload offer{MacPayload::NoteUpdate{records.notes()[0]}};
    for (int session = 0; session < 3; ++session) {
        beginSession();
        EXPECT_EQ(outbox.take(), std::vector{offer});
        reachMilestone();
        EXPECT_EQ(outbox.take(), std::vector{offer});
        reachMilestone();
        EXPECT_THAT(outbox.take(), IsEmpty());
        EXPECT_TRUE(sync.isSettled());
    }
}

TEST_F(RecordSyncTest, WhatTheMacDidNotNameBeforeItsFirstMilestoneIsOfferedAgain) {
    const auto lost = fromMac("Ztracená");
    const auto named = fromMac("Zůstala");
    ASSERT_TRUE(records.merge(lost));
    ASSERT_TRUE(records.merge(named));
    beginSession();
    tell(named);
    reachMilestone();
    const MacPayload offer{MacPayload::NoteUpdate{lost}};
    EXPECT_THAT(outbox.take(), testing::Contains(offer));
    EXPECT_EQ(reloaded().unconfirmed(), std::vector{lost.id});
}

TEST_F(RecordSyncTest, OnlyItsOwnMilestoneOfThisSessionEndsARound) {
    ASSERT_TRUE(records.merge(fromMac("Stará")));
    beginSession();
    const auto old = outbox.milestones.back();
    beginSession();
    result("a call of the user");
    result(old);
    result("");
    EXPECT_FALSE(sync.isSettled());
    EXPECT_THAT(records.unconfirmed(), IsEmpty()) << "nothing shows yet that the Mac has lost the note";
    reachMilestone();
    EXPECT_EQ(records.unconfirmed().size(), 1U);
}

TEST_F(RecordSyncTest, WithinARoundNothingIsSavedOrAcknowledgedAndAfterItEverythingAtOnce) {
    const auto first = fromMac("první");
    const auto second = fromMac("druhá");
    beginSession();
    tell(first);
    tell(second);
    EXPECT_THAT(outbox.take(), IsEmpty());
    EXPECT_THAT(reloaded().notes(), IsEmpty());
    reachMilestone();
    EXPECT_EQ(reloaded().notes(), (std::vector{first, second}));
    EXPECT_EQ(outbox.take(), (std::vector<MacPayload>{{MacPayload::NoteAck{first.id, 1}},
                                                      {MacPayload::NoteAck{second.id, 1}}}));
}

TEST_F(RecordSyncTest, BetweenRoundsANoteIsSavedAndAcknowledgedAtOnce) {
    beginSession();
    reachMilestone();
    const auto note = fromMac("Z Macu");
    tell(note);
    EXPECT_EQ(outbox.take(), (std::vector{MacPayload{MacPayload::NoteAck{note.id, 1}}}));
    EXPECT_EQ(reloaded().notes(), std::vector{note});
    tell(note);
    EXPECT_EQ(outbox.take().size(), 1U) << "no news, but the Mac may not know";
}

TEST_F(RecordSyncTest, WhatCouldNotBeSavedIsTriedAgainWithWhateverComes) {
    beginSession();
    const auto note = fromMac("Z Macu");
    tell(note);
    std::filesystem::create_directory(folder.path() / "records.json");
    reachMilestone();
    EXPECT_FALSE(*executor.run(sync.finish()));
    EXPECT_THAT(outbox.take(), IsEmpty());
    EXPECT_THAT(err.str(), testing::HasSubstr("Poznámky a souhrny nejde uložit: "));
    std::filesystem::remove(folder.path() / "records.json");
    hear(SecureLink::Zprava{{MacPayload::NoteAck{note.id, 1}}, "note-ack"});
    EXPECT_EQ(reloaded().notes(), std::vector{note});
    EXPECT_EQ(outbox.take().size(), 1U);
}

TEST_F(RecordSyncTest, AChangeWithinARoundIsOfferedBehindIt) {
    beginSession();
    const auto note = records.create("Nová", "text").value();
    ASSERT_TRUE(executor.run(sync.offer({note.id})));
    EXPECT_THAT(outbox.take(), IsEmpty());
    reachMilestone();
    EXPECT_EQ(outbox.take(), std::vector{MacPayload{MacPayload::NoteUpdate{note}}});
}

TEST_F(RecordSyncTest, NothingIsSettledBeforeTheMacHasToldEverything) {
    EXPECT_FALSE(sync.isSettled());
    beginSession();
    EXPECT_FALSE(sync.isSettled());
    reachMilestone();
    EXPECT_TRUE(sync.isSettled());
}

} // namespace
} // namespace morvex
