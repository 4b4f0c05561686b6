#include "foundation/Text.h"
#include "tests/app/personal/PoznamkyFixture.h"

#include <limits>

namespace morvex {
namespace {

using namespace std::chrono_literals;
using PoznamkyStoreTest = PoznamkyFixture;

TEST_F(PoznamkyStoreTest, ANewNoteIsTrimmedSavedShownAndTold) {
    auto note = store.vytvorit("  Nákup \n", "\t mléko \n").value();
    EXPECT_EQ(note.title, "Nákup");
    EXPECT_EQ(note.body, "mléko");
    EXPECT_EQ(note.revision, 1U);
    EXPECT_EQ(note.createdAt, clock.now());
    EXPECT_EQ(note.updatedAt, clock.now());
    EXPECT_FALSE(note.deletedAt);
    EXPECT_EQ(store.notes(), std::vector{note});
    EXPECT_EQ(changes, std::vector{note});
    EXPECT_EQ(viewChanges, 1);
    EXPECT_EQ(reloaded().notes(), std::vector{note});
}

TEST_F(PoznamkyStoreTest, TheFileIsOneObjectWithNumericDates) {
    clock.setWallClock(dateFromSeconds(978'307'200 + 5) + 500ms);
    ASSERT_TRUE(store.vytvorit("Nákup", "mléko"));
    ASSERT_TRUE(store.smazat("Nákup"));
    EXPECT_EQ(textIn(file), R"({"schemaVersion":1,"notes":[{"id":"00000000-0000-4000-8000-000000000001",)"
                            R"("title":"Nákup","body":"mléko","createdAt":5.5,"updatedAt":5.5,"revision":2,)"
                            R"("deletedAt":5.5}]})");
}

TEST_F(PoznamkyStoreTest, ATitleOrBodyOfBlanksIsRefused) {
    const std::vector<std::pair<std::string, std::string>> rows{
        {"", "b"}, {"  \n", "b"}, {"a", ""}, {"a", " \u00a0\t"}};
    for (const auto& [title, body] : rows)
        EXPECT_EQ(sentence(store.vytvorit(title, body)), "Poznámka musí mít název i obsah.") << title;
    EXPECT_TRUE(store.vsechny().empty());
    EXPECT_TRUE(changes.empty());
    EXPECT_FALSE(std::filesystem::exists(file));
}

TEST_F(PoznamkyStoreTest, ATitleIsCutTo160CharactersAsAPersonCountsThem) {
    std::string family;
    for (int i = 0; i < 200; ++i) family += "👨‍👩‍👧";
    EXPECT_EQ(countCharacters(create(std::string(200, 'a')).title), 160U);
    EXPECT_EQ(create(family).title, firstCharacters(family, 160));
    auto changed = store.upravit(std::string(160, 'a'), std::string(161, 'b'), {}).value();
    EXPECT_EQ(changed.title, std::string(160, 'b'));
}

TEST_F(PoznamkyStoreTest, ATitleOfOneCharacterWithoutEndIsCutToo) {
    std::string letter = "a";
    while (letter.size() < 1'000'000) letter += "\u0301\u0316";
    EXPECT_EQ(create(letter).title.size(), 5119U);
    auto changed = store.upravit(create("b").title, letter, {}).value();
    EXPECT_EQ(changed.title.size(), 5119U);
}

TEST_F(PoznamkyStoreTest, NotesWhoseLettersHaveMarksWithoutEndAreFoundLikeOthers) {
    // Sorting the marks of each letter would take hours.
    std::string marks;
    for (int i = 0; i < 100'000; ++i) marks += "\u0301";
    for (int i = 0; i < 100'000; ++i) marks += "\u0316";
    EXPECT_TRUE(store.prijmout(fromPhone("Nákup" + marks)));
    auto hostile = fromPhone("jiná");
    hostile.body = "x" + marks + " konec";
    EXPECT_TRUE(store.prijmout(hostile));
    EXPECT_EQ(store.hledat("KONEC", 20), std::vector{hostile});
    EXPECT_EQ(store.hledat("x" + marks + marks, 20), std::vector{hostile});
    EXPECT_TRUE(store.smazat("nakup"));
}

TEST_F(PoznamkyStoreTest, AQueryCountsAsFarAsItsFirst1000Characters) {
    const auto note = store.vytvorit("a", std::string(1000, 'x') + "y").value();
    EXPECT_EQ(store.hledat(std::string(999, 'x') + "z", 20), std::vector<MorvexNote>{});
    EXPECT_EQ(store.hledat(std::string(1000, 'x') + "z", 20), std::vector{note});
}

TEST_F(PoznamkyStoreTest, ATitleOfMoreThan64KibibytesNamesNoNote) {
    for (const std::size_t size : {64 * 1024U, 64 * 1024U + 1})
        EXPECT_TRUE(store.prijmout(fromPhone(std::string(size, 'a'))));
    EXPECT_TRUE(store.smazat(std::string(64 * 1024, 'A')));
    EXPECT_EQ(sentence(store.smazat(std::string(64 * 1024 + 1, 'A'))),
              "Poznámku s tímto názvem jsem nenašel.");
}

TEST_F(PoznamkyStoreTest, AChangedNoteIsFoundByWhatItSaysNow) {
    create("Nákup");
    EXPECT_EQ(store.hledat("nákup", 20).size(), 1U);
    ASSERT_TRUE(store.upravit("nakup", "Úklid", "smeták"));
    EXPECT_TRUE(store.hledat("nákup", 20).empty());
    EXPECT_EQ(store.hledat("úklid", 20).size(), 1U);
    EXPECT_EQ(store.hledat("smeták", 20).size(), 1U);
    EXPECT_FALSE(store.upravit("uklid", "Zahrada", " ")) << "the title holds without a revision";
    EXPECT_TRUE(store.smazat("zahrada"));
}

TEST_F(PoznamkyStoreTest, ATitleFromThePhoneIsNotCut) {
    EXPECT_TRUE(store.prijmout(fromPhone(std::string(200, 'a'))));
    EXPECT_EQ(store.notes()[0].title.size(), 200U);
}

TEST_F(PoznamkyStoreTest, TheLastChangedNoteComesFirstAndEqualDatesKeepTheirOrder) {
    create("první");
    auto second = create("druhá");
    ASSERT_TRUE(store.vytvorit("třetí", "ve stejnou chvíli"));
    EXPECT_EQ(titles(store.notes()), (Titles{"druhá", "třetí", "první"}));
    clock.advance(1s);
    ASSERT_TRUE(store.upravit("první", {}, "nový obsah"));
    EXPECT_EQ(titles(store.notes()), (Titles{"první", "druhá", "třetí"}));
    EXPECT_EQ(titles(store.vsechny()), (Titles{"první", "druhá", "třetí"}));
    EXPECT_EQ(second.revision, 1U);
}

TEST_F(PoznamkyStoreTest, SearchLooksIntoTitleAndBodyWhateverTheCase) {
    create("Nákup", "MLÉKO a rohlíky");
    create("Mléčné výrobky");
    create("Auto");
    EXPECT_EQ(titles(store.hledat(" mléko \n", 10)), Titles{"Nákup"});
    EXPECT_EQ(titles(store.hledat("MLÉ", 10)), (Titles{"Mléčné výrobky", "Nákup"}));
    EXPECT_TRUE(store.hledat("vlak", 10).empty());
}

TEST_F(PoznamkyStoreTest, ASearchKeepsDiacriticsAndATitleMatchDoesNot) {
    create("Žluťoučký kůň");
    EXPECT_TRUE(store.hledat("zlutoucky", 10).empty());
    EXPECT_EQ(store.hledat("žluťoučký", 10).size(), 1U);
    EXPECT_TRUE(store.upravit("ZLUTOUCKY KUN", {}, "nový"));
}

TEST_F(PoznamkyStoreTest, ALimitOf0GivesOneAndNoLimitGivesMoreThan20) {
    for (int i = 1; i <= 25; ++i) create("poznámka " + std::to_string(i));
    EXPECT_EQ(titles(store.hledat("   ", 0)), Titles{"poznámka 25"});
    EXPECT_EQ(store.hledat("", -7).size(), 1U);
    EXPECT_EQ(store.hledat("", std::numeric_limits<std::int64_t>::min()).size(), 1U);
    EXPECT_EQ(store.hledat("", 3).size(), 3U);
    EXPECT_EQ(store.hledat("poznámka", 50).size(), 20U);
    EXPECT_EQ(store.hledat("", std::numeric_limits<std::int64_t>::max()).size(), 20U);
}

TEST_F(PoznamkyStoreTest, DeletedNotesAreNotFound) {
    create("Nákup");
    ASSERT_TRUE(store.smazat("Nákup"));
    EXPECT_TRUE(store.hledat("", 10).empty());
    EXPECT_TRUE(store.notes().empty());
}

TEST_F(PoznamkyStoreTest, ATitleIsMatchedWholeAndUntrimmed) {
    create("Nákup");
    for (const char* title : {"Nák", "Nákup 2", " Nákup", "Nákup ", ""})
        EXPECT_EQ(sentence(store.smazat(title)), "Poznámku s tímto názvem jsem nenašel.") << title;
}

TEST_F(PoznamkyStoreTest, TheFirstMatchInStoredOrderIsTakenNotTheNewest) {
    auto older = create("Nákup", "starší");
    create("nakup", "novější");
    EXPECT_EQ(store.upravit("NÁKUP", {}, "změněno").value().id, older.id);
    EXPECT_EQ(store.smazat("nákup").value().id, older.id);
    EXPECT_EQ(store.smazat("nákup").value().body, "novější");
}

TEST_F(PoznamkyStoreTest, AnUpdateTrimsRaisesTheRevisionAndIsTold) {
    auto note = create("Nákup");
    clock.advance(5s);
    auto changed = store.upravit("nakup", "  Velký nákup ", " mouka ").value();
    EXPECT_EQ(changed.id, note.id);
    EXPECT_EQ(changed.title, "Velký nákup");
    EXPECT_EQ(changed.body, "mouka");
    EXPECT_EQ(changed.revision, 2U);
    EXPECT_EQ(changed.createdAt, note.createdAt);
    EXPECT_EQ(changed.updatedAt, clock.now());
    EXPECT_EQ(changes.back(), changed);
    EXPECT_EQ(reloaded().notes(), std::vector{changed});
}

TEST_F(PoznamkyStoreTest, AnEmptyUpdateRaisesTheRevisionAllTheSame) {
    auto note = create("Nákup");
    clock.advance(5s);
    auto changed = store.upravit("Nákup", {}, {}).value();
    EXPECT_EQ(changed.revision, 2U);
    EXPECT_EQ(changed.updatedAt, note.updatedAt + 5s);
    EXPECT_EQ(changed.body, note.body);
    EXPECT_EQ(changes.size(), 2U);
}

TEST_F(PoznamkyStoreTest, ACheckThatFailsLateLeavesTheNewTitleInMemory) {
    create("Nákup");
    EXPECT_EQ(sentence(store.upravit("Nákup", "Jiný", "  ")), "Poznámka musí mít název i obsah.");
    EXPECT_EQ(store.vsechny()[0].title, "Jiný");
    EXPECT_EQ(store.vsechny()[0].revision, 1U);
    EXPECT_EQ(titles(store.notes()), Titles{"Nákup"}) << "nothing was saved";
    EXPECT_EQ(titles(reloaded().notes()), Titles{"Nákup"});
    EXPECT_EQ(changes.size(), 1U);
    create("další");
    EXPECT_EQ(titles(reloaded().vsechny()), (Titles{"Jiný", "další"})) << "the next save writes it";
}

TEST_F(PoznamkyStoreTest, ABlankNewTitleIsRefusedBeforeAnythingChanges) {
    auto note = create("Nákup");
    EXPECT_EQ(sentence(store.upravit("Nákup", " ", "nový")), "Poznámka musí mít název i obsah.");
    EXPECT_EQ(store.vsechny(), std::vector{note});
}

TEST_F(PoznamkyStoreTest, AnUnknownTitleIsNotFoundWhateverElseIsWrong) {
    EXPECT_EQ(sentence(store.upravit("Nákup", "", "")), "Poznámku s tímto názvem jsem nenašel.");
    EXPECT_EQ(sentence(store.smazat("Nákup")), "Poznámku s tímto názvem jsem nenašel.");
}

TEST_F(PoznamkyStoreTest, ADeletedNoteStaysAsARecordAndASecondDeleteFindsNothing) {
    create("Žluťoučký kůň");
    clock.advance(5s);
    auto deleted = store.smazat("ZLUTOUCKY KUN").value();
    EXPECT_EQ(deleted.deletedAt, clock.now());
    EXPECT_EQ(deleted.updatedAt, clock.now());
    EXPECT_EQ(deleted.revision, 2U);
    EXPECT_EQ(changes.back(), deleted);
    EXPECT_TRUE(store.notes().empty());
    EXPECT_EQ(reloaded().vsechny(), std::vector{deleted});
    EXPECT_EQ(sentence(store.smazat("ZLUTOUCKY KUN")), "Poznámku s tímto názvem jsem nenašel.");
}

/// A clock that has gone on each time it is read.
class GoingClock final : public Clock {
  public:
    [[nodiscard]] Date now() const override {
        still_.advance(1s);
        return still_.now();
    }

    [[nodiscard]] Duration sinceBoot() const override { return still_.sinceBoot(); }

    TimerId at(Duration when, Job callback) override { return still_.at(when, std::move(callback)); }

    void forget(TimerId timer) override { still_.forget(timer); }

  private:
    mutable ManualClock still_;
};

TEST_F(PoznamkyStoreTest, ADeletionIsTheLastChangeAtOneAndTheSameTime) {
    GoingClock going;
    AwaitedNotes notes(support.path(), going, random);
    ASSERT_TRUE(notes.vytvorit("Nákup", "obsah"));
    const auto deleted = notes.smazat("Nákup").value();
    EXPECT_GT(deleted.updatedAt, deleted.createdAt);
    EXPECT_EQ(deleted.deletedAt, deleted.updatedAt);
}

TEST_F(PoznamkyStoreTest, ALocalFailureIsNotRolledBack) {
    auto note = create("Nákup");
    viewChanges = 0;
    breakSaves();
    EXPECT_NE(sentence(store.vytvorit("Druhá", "obsah")), "no failure");
    EXPECT_NE(sentence(store.upravit("Nákup", {}, "změněno")), "no failure");
    EXPECT_EQ(titles(store.vsechny()), (Titles{"Nákup", "Druhá"}));
    EXPECT_EQ(store.vsechny()[0].revision, 2U);
    EXPECT_EQ(store.notes(), std::vector{note}) << "what is shown is what was saved";
    EXPECT_FALSE(store.problem());
    EXPECT_EQ(changes.size(), 1U);
    EXPECT_EQ(viewChanges, 0);

    mendSaves();
    ASSERT_TRUE(store.smazat("Druhá"));
    EXPECT_EQ(reloaded().vsechny()[0].body, "změněno");
    EXPECT_EQ(titles(store.notes()), Titles{"Nákup"});
}

} // namespace
} // namespace morvex
