#include "shared/base/SystemError.h"
#include "tests/app/personal/PoznamkyFixture.h"
#include "tests/support/PlainUser.h"

#include <cerrno>
#include <limits>

namespace morvex {
namespace {

using namespace std::chrono_literals;
using PoznamkyMergeTest = PoznamkyFixture;

TEST_F(PoznamkyMergeTest, ANoteOfThePhoneIsAddedAndNotToldBack) {
    auto note = fromPhone("Z telefonu");
    EXPECT_TRUE(store.prijmout(note));
    EXPECT_EQ(store.notes(), std::vector{note});
    EXPECT_EQ(reloaded().notes(), std::vector{note});
    EXPECT_TRUE(changes.empty());
    EXPECT_EQ(viewChanges, 1);
}

TEST_F(PoznamkyMergeTest, ADeletedNoteOfThePhoneIsKeptEvenWhenItWasNeverHere) {
    auto deleted = fromPhone("Smazaná", 4);
    deleted.deletedAt = clock.now();
    EXPECT_TRUE(store.prijmout(deleted));
    EXPECT_TRUE(store.notes().empty());
    EXPECT_EQ(reloaded().vsechny(), std::vector{deleted});
    EXPECT_EQ(viewChanges, 0);
}

TEST_F(PoznamkyMergeTest, ATombstoneOfAHigherRevisionHidesANoteThatIsVisibleHereAndStaysInTheFile) {
    auto note = create("Nákup");
    auto deleted = note;
    deleted.revision = 2;
    deleted.deletedAt = deleted.updatedAt - 9s;
    deleted.updatedAt -= 9s;
    EXPECT_TRUE(store.prijmout(deleted));
    EXPECT_TRUE(store.notes().empty());
    EXPECT_EQ(reloaded().vsechny(), std::vector{deleted});
    EXPECT_EQ(sentence(store.smazat("Nákup")), "Poznámku s tímto názvem jsem nenašel.");
}

TEST_F(PoznamkyMergeTest, ALiveNoteOfAHigherRevisionReplacesAStoredTombstone) {
    create("Nákup");
    auto again = store.smazat("Nákup").value();
    again.deletedAt.reset();
    EXPECT_TRUE(store.prijmout(again)) << "the same revision and date: what is stored stays";
    EXPECT_TRUE(store.notes().empty());
    again.revision = 3;
    EXPECT_TRUE(store.prijmout(again));
    EXPECT_EQ(store.notes(), std::vector{again});
    EXPECT_EQ(reloaded().vsechny(), std::vector{again});
}

TEST_F(PoznamkyMergeTest, TheRevisionDecidesAndAtEqualOnesTheLaterChange) {
    auto stored = create("Nákup");
    create("další");

    struct Row {
        std::uint64_t revision;
        Clock::Duration later;
        bool replaces;
    };

    const auto base = std::chrono::duration_cast<Date::duration>(0s);
    for (auto [revision, later, replaces] : {Row{0, 9s, false}, Row{1, 0s, false}, Row{1, -1s, false},
                                             Row{1, 1s, true}, Row{2, -9s, true}, Row{1, 99s, false}}) {
        auto incoming = stored;
        incoming.title = "verze " + std::to_string(revision) + "/" + std::to_string(later.count());
        incoming.revision = revision;
        incoming.updatedAt += base + std::chrono::duration_cast<Date::duration>(later);
        auto before = textIn(file);
        EXPECT_TRUE(store.prijmout(incoming)) << incoming.title;
        EXPECT_EQ(store.vsechny()[0] == incoming, replaces) << incoming.title;
        EXPECT_EQ(textIn(file) != before, replaces) << incoming.title;
    }
    EXPECT_EQ(store.vsechny()[1].title, "další") << "a replaced note keeps its place";
}

TEST_F(PoznamkyMergeTest, AnIgnoredNoteIsTakenEvenWhileNothingCanBeSaved) {
    auto note = create("Nákup");
    breakSaves();
    EXPECT_TRUE(store.prijmout(note));
    EXPECT_FALSE(store.problem());
}

TEST_F(PoznamkyMergeTest, ANoteOfThePhoneThatCannotBeSavedIsPutBackAndToldOf) {
    auto note = create("Nákup");
    viewChanges = 0;
    breakSaves();
    auto newer = note;
    newer.revision = 9;
    newer.body = "novější";
    EXPECT_FALSE(store.prijmout(newer));
    EXPECT_FALSE(store.prijmout(fromPhone("Nová")));
    EXPECT_EQ(store.vsechny(), std::vector{note});
    EXPECT_EQ(store.notes(), std::vector{note});
    EXPECT_TRUE(store.problem());
    EXPECT_EQ(viewChanges, 1);

    mendSaves();
    EXPECT_TRUE(store.prijmout(newer));
    EXPECT_FALSE(store.problem());
    EXPECT_EQ(reloaded().notes(), std::vector{newer});
}

TEST_F(PoznamkyMergeTest, TheProblemIsTheErrorOfTheSaveThatFailedLast) {
    create("Nákup");
    breakSaves();
    EXPECT_FALSE(store.prijmout(fromPhone("Nová")));
    EXPECT_EQ(store.problem(), SystemError{ENOTDIR}.popis().czech());
    mendSaves();
    lockSaves();
    const PlainUser user;
    EXPECT_FALSE(store.prijmout(fromPhone("Nová")));
    EXPECT_EQ(store.problem(), SystemError{EACCES}.popis().czech());
    EXPECT_EQ(sentence(store.vytvorit("Místní", "obsah")), SystemError{EACCES}.popis().czech());
}

TEST_F(PoznamkyMergeTest, PuttingBackKeepsLocalChangesThatWaitForASaveAndShowsThem) {
    create("Nákup");
    breakSaves();
    EXPECT_FALSE(store.vytvorit("Druhá", "obsah"));
    EXPECT_FALSE(store.prijmout(fromPhone("Nová")));
    EXPECT_EQ(titles(store.notes()), (Titles{"Nákup", "Druhá"}));
    EXPECT_EQ(store.vsechny().size(), 2U);
}

TEST_F(PoznamkyMergeTest, AnyGoodSaveClearsTheProblem) {
    breakSaves();
    EXPECT_FALSE(store.prijmout(fromPhone("Nová")));
    EXPECT_TRUE(store.problem());
    mendSaves();
    create("místní");
    EXPECT_FALSE(store.problem());
}

TEST_F(PoznamkyMergeTest, ABadArchiveCountsAsNoneAndIsKeptAsideBeforeTheNextSave) {
    const std::vector<std::string> bad{
        "",
        "ne",
        "[]",
        R"({"schemaVersion":1})",
        R"({"schemaVersion":2,"notes":[]})",
        R"({"schemaVersion":0,"notes":[]})",
        R"({"schemaVersion":"1","notes":[]})",
        R"({"schemaVersion":1,"notes":[{"id":"x"}]})",
        R"({"schemaVersion":1,"notes":[{"id":"00000000-0000-4000-8000-000000000001","title":"a","body":"b",)"
        R"("createdAt":"2026-01-01T00:00:00Z","updatedAt":0,"revision":1}]})",
    };
    for (const auto& text : bad) {
        std::filesystem::remove_all(folder);
        put(file, text);
        auto opened = reloaded();
        EXPECT_TRUE(opened.vsechny().empty()) << text;
        EXPECT_FALSE(opened.problem()) << text;
        EXPECT_EQ(textIn(file), text);
        auto note = opened.vytvorit("Nová", "obsah").value();
        EXPECT_EQ(reloaded().vsechny(), std::vector{note}) << text;
        EXPECT_EQ(textIn(file.string() + ".damaged"), text);
    }
}

TEST_F(PoznamkyMergeTest, AnArchiveOfAnotherVersionIsReplacedByVersion1AndWhatWasAddedSince) {
    create("stará");
    auto text = textIn(file);
    put(file, text.replace(text.find(":1,"), 3, ":2,"));
    auto opened = reloaded();
    EXPECT_TRUE(opened.notes().empty());
    ASSERT_TRUE(opened.prijmout(fromPhone("nová")));
    EXPECT_TRUE(textIn(file).starts_with(R"({"schemaVersion":1,)"));
    EXPECT_EQ(titles(reloaded().vsechny()), Titles{"nová"});
}

TEST_F(PoznamkyMergeTest, AHugeArchiveIsNotReadAndNotWritten) {
    constexpr auto sizeLimit = RecordFile<NotesArchive>::sizeLimit;
    put(file, std::string(sizeLimit + 1, ' '));
    auto opened = reloaded();
    EXPECT_TRUE(opened.vsechny().empty());
    EXPECT_TRUE(opened.vytvorit("a", "b"));
    auto large = fromPhone("velká");
    large.body = std::string(sizeLimit, 'x');
    EXPECT_FALSE(opened.prijmout(large));
    EXPECT_EQ(titles(opened.vsechny()), Titles{"a"});
}

TEST_F(PoznamkyMergeTest, NotesOfThePhoneLeaveRoomForChangesOfThisComputer) {
    const std::string half(PoznamkyStore::receivedLimit / 2, 'x');
    auto note = fromPhone("velká");
    note.body = half;
    ASSERT_TRUE(store.prijmout(note));
    auto second = fromPhone("druhá");
    second.body = half;
    EXPECT_FALSE(store.prijmout(second));
    EXPECT_TRUE(store.problem());
    EXPECT_TRUE(store.vytvorit("zdejší", half)) << "beyond the limit of the phone";

    auto longer = note;
    longer.revision += 1;
    longer.body += '"';
    EXPECT_FALSE(store.prijmout(longer));
    note.revision += 2;
    note.deletedAt = note.updatedAt;
    EXPECT_TRUE(store.prijmout(note)) << "a deletion needs no room";
    EXPECT_EQ(titles(reloaded().notes()), Titles{"zdejší"});
}

TEST_F(PoznamkyMergeTest, KeepsTheFractionsOfItsOwnDates) {
    clock.setWallClock(dateFromSeconds(1'800'000'000) + std::chrono::microseconds(123'457));
    auto note = store.vytvorit("Nákup", "obsah").value();
    EXPECT_EQ(reloaded().notes(), std::vector{note});
}

TEST_F(PoznamkyMergeTest, TheHighestRevisionIsTakenShownSavedAndReadAndSupersededByALaterDate) {
    auto last = fromPhone("Poslední", std::numeric_limits<std::uint64_t>::max());
    EXPECT_TRUE(store.prijmout(last));
    EXPECT_TRUE(store.prijmout(last));
    EXPECT_EQ(reloaded().notes(), std::vector{last});
    last.updatedAt += 1s;
    EXPECT_TRUE(store.prijmout(last));
    EXPECT_EQ(store.notes(), std::vector{last});
    EXPECT_TRUE(store.vytvorit("Jiná", "obsah"));
}

TEST_F(PoznamkyMergeTest, ALocalChangeOfTheHighestRevisionEndsTheProcess) {
    ASSERT_TRUE(store.prijmout(fromPhone("Poslední", std::numeric_limits<std::uint64_t>::max())));
    EXPECT_DEATH((void)store.upravit("Poslední", {}, {}), "no higher revision");
    EXPECT_DEATH((void)store.smazat("Poslední"), "no higher revision");
}

} // namespace
} // namespace morvex
