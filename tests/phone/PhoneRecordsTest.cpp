#include "phone/PhoneRecords.h"

#include "platform/memory/ManualClock.h"
#include "platform/memory/ScriptedRandom.h"
#include "platform/posix/base/AtomicFile.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <fstream>
#include <limits>

namespace morvex {
namespace {

using namespace std::chrono_literals;

/// A second later at each reading.
class HastyClock final : public Clock {
  public:
    [[nodiscard]] Date now() const override { return dateFromSeconds(1'800'000'000 + ++readings_); }

    [[nodiscard]] Duration sinceBoot() const override { return {}; }

    TimerId at(Duration, Job) override { return {}; }

    void forget(TimerId) override {}

  private:
    mutable int readings_ = 0;
};

class PhoneRecordsTest : public testing::Test {
  protected:
    [[nodiscard]] PhoneRecords reloaded() { return PhoneRecords::load(folder.path(), clock, random); }

    MorvexNote fromMac(const std::string& title, std::uint64_t revision = 1) {
        return {macRandom.uuid(), title, "z Macu", seconds(), seconds(), revision, {}};
    }

    [[nodiscard]] Date seconds() const { return dateFromSeconds(wholeSeconds(clock.now())); }

    static std::string sentence(const auto& outcome) {
        return outcome ? "no failure" : outcome.error().popis().czech();
    }

    TemporaryFolder folder;
    ManualClock clock{dateFromSeconds(1'800'000'000) + 250ms};
    ScriptedRandom random;
    ScriptedRandom macRandom = [] {
        ScriptedRandom other;
        for (int i = 0; i < 1000; ++i) (void)other.uuid();
        return other;
    }();
    PhoneRecords records = reloaded();
};

TEST_F(PhoneRecordsTest, ANewNoteIsSavedInWholeSecondsAndWaitsForTheMac) {
    auto note = records.create(" Nákup ", "mléko\n").value();
    EXPECT_EQ(note, (MorvexNote{note.id, "Nákup", "mléko", seconds(), seconds(), 1, {}}));
    EXPECT_FALSE(records.isConfirmed(note.id));
    EXPECT_EQ(reloaded().notes(), std::vector{note});
    EXPECT_EQ(reloaded().unconfirmed(), std::vector{note.id});
    EXPECT_EQ(reloaded().offer(note.id), MacPayload{MacPayload::NoteUpdate{note}});
}

TEST_F(PhoneRecordsTest, AChangeIsFoundByTitleAndRaisesTheRevision) {
    auto note = records.create("Žluťoučký kůň", "úpí").value();
    clock.advance(5s);
    auto changed = records.edit("ZLUTOUCKY KUN", "ržá", {}).value();
    EXPECT_EQ(changed.revision, 2U);
    EXPECT_EQ(changed.title, note.title);
    EXPECT_EQ(changed.updatedAt, note.updatedAt + 5s);
    EXPECT_EQ(records.edit("Žluťoučký kůň", "ržá", "Kůň").value().title, "Kůň");
    auto deleted = records.remove("kun").value();
    EXPECT_EQ(deleted.revision, 4U);
    EXPECT_EQ(deleted.deletedAt, deleted.updatedAt);
    EXPECT_EQ(records.unconfirmed().size(), 1U) << "one record waits once";
    EXPECT_EQ(sentence(records.remove("kun")), "Poznámku „kun“ tu nemám.");
}

TEST_F(PhoneRecordsTest, BlankTextsAreRefused) {
    ASSERT_TRUE(records.create("a", "b"));
    EXPECT_EQ(sentence(records.create(" ", "b")), "Chybí název nebo text.");
    EXPECT_EQ(sentence(records.create("a", "\n")), "Chybí název nebo text.");
    EXPECT_EQ(sentence(records.edit("a", " ", {})), "Chybí název nebo text.");
    EXPECT_EQ(sentence(records.edit("a", "b", " ")), "Chybí název nebo text.");
    EXPECT_EQ(sentence(records.summarize("a", "", {})), "Chybí název nebo text.");
    EXPECT_EQ(records.notes().size(), 1U);
    EXPECT_EQ(records.notes()[0].revision, 1U);
}

TEST_F(PhoneRecordsTest, ASummaryCoversTheLastDay) {
    auto summary = records.summarize("Den", "shrnutí", {"mail"}).value();
    EXPECT_EQ(summary.periodEnd - summary.periodStart, 24h);
    EXPECT_EQ(summary.sources, std::vector<std::string>{"mail"});
    EXPECT_EQ(reloaded().summaries(), std::vector{summary});
    EXPECT_EQ(records.offer(summary.id), MacPayload{MacPayload::SummaryUpdate{summary}});
    EXPECT_TRUE(records.confirm(summary.id, 1));
    EXPECT_FALSE(records.offer(summary.id)) << "the Mac has it";
    EXPECT_TRUE(records.unconfirmed().empty());
}

TEST_F(PhoneRecordsTest, ADeletionHasOneTime) {
    HastyClock hasty;
    auto kept = PhoneRecords::load(folder.path(), hasty, random);
    const auto created = kept.create("Kůň", "úpí").value();
    EXPECT_EQ(created.createdAt, created.updatedAt);
    const auto deleted = kept.remove("Kůň").value();
    EXPECT_EQ(deleted.deletedAt, deleted.updatedAt);
}

TEST_F(PhoneRecordsTest, OnlyTheLatestRevisionConfirms) {
    auto note = records.create("Nákup", "mléko").value();
    ASSERT_TRUE(records.edit("Nákup", "mouka", {}));
    EXPECT_FALSE(records.confirm(note.id, 1));
    EXPECT_FALSE(records.confirm(macRandom.uuid(), 9));
    EXPECT_FALSE(records.isConfirmed(note.id));
    EXPECT_TRUE(records.confirm(note.id, 2));
    EXPECT_FALSE(records.confirm(note.id, 2)) << "no news";
    EXPECT_TRUE(records.isConfirmed(note.id));
}

TEST_F(PhoneRecordsTest, TheMacsVersionIsTakenUnlessOursCountsMore) {
    auto own = records.create("Nákup", "mléko").value();
    clock.advance(5s);
    own = records.edit("Nákup", "mouka", {}).value();

    auto told = own;
    told.body = "z Macu";
    told.revision = 1;
    EXPECT_FALSE(records.merge(told));
    told.revision = 2;
    told.updatedAt -= 1s;
    EXPECT_FALSE(records.merge(told));
    EXPECT_EQ(records.notes(), std::vector{own});
    EXPECT_FALSE(records.isConfirmed(own.id));

    told.updatedAt += 1s;
    EXPECT_TRUE(records.merge(told)) << "the Mac keeps its own of two that count the same, so this one stays";
    EXPECT_EQ(records.notes(), std::vector{told});
    EXPECT_TRUE(records.isConfirmed(own.id));
    told.revision = 9;
    told.deletedAt = seconds();
    EXPECT_TRUE(records.merge(told));
    EXPECT_EQ(records.notes(), std::vector{told});
}

TEST_F(PhoneRecordsTest, OurOwnNoteComingBackConfirmsIt) {
    auto own = records.create("Nákup", "mléko").value();
    EXPECT_TRUE(records.merge(own));
    EXPECT_TRUE(records.isConfirmed(own.id));
    EXPECT_FALSE(records.merge(own)) << "no news";
}

TEST_F(PhoneRecordsTest, AnOlderVersionOfAConfirmedNoteShowsThatTheMacHasLostOurs) {
    auto old = records.create("Nákup", "mléko").value();
    auto own = records.edit("Nákup", "mouka", {}).value();
    ASSERT_TRUE(records.confirm(own.id, 2));
    EXPECT_TRUE(records.merge(old));
    EXPECT_EQ(records.unconfirmed(), std::vector{own.id});
    EXPECT_FALSE(records.merge(old)) << "no news";
}

TEST_F(PhoneRecordsTest, WhatTheMacDidNotNameItHasLostAndSoItsSummaries) {
    auto told = records.create("Nákup", "mléko").value();
    auto lost = records.create("Auto", "olej").value();
    auto waiting = records.create("Kolo", "řetěz").value();
    auto summary = records.summarize("Den", "shrnutí", {}).value();
    for (const auto& id : {told.id, lost.id, summary.id}) ASSERT_TRUE(records.confirm(id, 1));
    EXPECT_FALSE(records.missedAmong({told.id, lost.id})) << "what waits for the Mac is no loss";
    EXPECT_TRUE(records.isConfirmed(summary.id));
    EXPECT_TRUE(records.missedAmong({told.id}));
    EXPECT_EQ(records.unconfirmed(), (std::vector{waiting.id, lost.id, summary.id}));
    EXPECT_FALSE(records.missedAmong({told.id})) << "no news";
}

TEST_F(PhoneRecordsTest, ForANewMacNothingIsConfirmed) {
    ASSERT_TRUE(records.forgetConfirmations());
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "records.json")) << "there is nothing to confirm";
    auto note = records.create("Nákup", "mléko").value();
    auto summary = records.summarize("Den", "shrnutí", {}).value();
    ASSERT_TRUE(records.confirm(note.id, 1));
    ASSERT_TRUE(records.confirm(summary.id, 1));
    ASSERT_TRUE(records.forgetConfirmations());
    EXPECT_EQ(reloaded().unconfirmed().size(), 2U);
}

TEST_F(PhoneRecordsTest, WhatIsKeptIsThereAtTheNextStartAndWhatCouldNotBeIsRefused) {
    ASSERT_TRUE(records.create("Nákup", "mléko"));
    ASSERT_FALSE(records.summarize("Den", "shrnutí", std::vector<std::string>(5'000'000)));
    EXPECT_EQ(reloaded().notes().size(), 1U);
}

TEST_F(PhoneRecordsTest, ANewNoteOfTheMacNeedsNoConfirmation) {
    auto note = fromMac("Z Macu");
    EXPECT_TRUE(records.merge(note));
    EXPECT_TRUE(records.unconfirmed().empty());
    ASSERT_TRUE(records.save());
    EXPECT_EQ(reloaded().notes(), std::vector{note});
}

TEST_F(PhoneRecordsTest, TheHighestRevisionIsRefusedInWords) {
    ASSERT_TRUE(records.merge(fromMac("Poslední", std::numeric_limits<std::uint64_t>::max())));
    EXPECT_EQ(sentence(records.edit("Poslední", "x", {})), "Poznámku „Poslední“ už nejde změnit.");
    EXPECT_EQ(sentence(records.remove("Poslední")), "Poznámku „Poslední“ už nejde změnit.");
}

TEST_F(PhoneRecordsTest, AForeignFileIsKeptAside) {
    for (const char* text : {"ne", R"({"schemaVersion":2,"notes":[],"summaries":[],"unconfirmed":[]})"}) {
        std::filesystem::remove(folder.path() / "records.json.damaged");
        std::ofstream(folder.path() / "records.json") << text;
        auto opened = reloaded();
        EXPECT_TRUE(opened.notes().empty());
        ASSERT_TRUE(opened.create("a", "b"));
        auto aside = readWhole(folder.path() / "records.json.damaged", 1000).value();
        ASSERT_TRUE(aside);
        EXPECT_EQ(asText(*aside), text);
    }
}

TEST_F(PhoneRecordsTest, AFailedSaveIsToldInWords) {
    std::filesystem::create_directory(folder.path() / "records.json");
    EXPECT_TRUE(sentence(records.create("a", "b")).starts_with("Poznámky a souhrny nejde uložit: "));
}

} // namespace
} // namespace morvex
