#include "tests/app/personal/PersonalStores.h"
#include "tests/support/AwaitedStores.h"

#include <chrono>
#include <string>
#include <vector>

namespace morvex {
namespace {

using namespace std::chrono_literals;

/// In which order the stores show records of one date.
class OrderOfRecordsTest : public PersonalStores {
  protected:
    using Titles = std::vector<std::string>;

    /// So many that a sort which is not stable cannot leave them in their order by chance.
    static Titles many() {
        Titles titles;
        for (int number = 0; number < 100; ++number) titles.push_back("záznam " + std::to_string(number));
        return titles;
    }

    template <class Record> static Titles titles(const std::vector<Record>& records) {
        Titles titles;
        for (const auto& record : records) titles.push_back(record.title);
        return titles;
    }

    MorvexSummary summary(const std::string& title, Clock::Duration age = 0s) {
        const auto created = clock.now() - std::chrono::duration_cast<Date::duration>(age);
        return {random.uuid(), title, "shrnutí", created, created, created, {}, 1};
    }
};

TEST_F(OrderOfRecordsTest, NotesOfOneDateKeepTheOrderOfTheirComing) {
    AwaitedNotes store(support.path(), clock, random);
    for (const auto& title : many()) ASSERT_TRUE(store.vytvorit(title, "obsah"));
    EXPECT_EQ(titles(store.notes()), many());
    EXPECT_EQ(titles(AwaitedNotes(support.path(), clock, random).notes()), many());
}

TEST_F(OrderOfRecordsTest, SummariesOfOneDateKeepTheOrderOfTheirComing) {
    AwaitedSummaries store(support.path());
    for (const auto& title : many()) ASSERT_TRUE(store.prijmout(summary(title)));
    EXPECT_EQ(titles(store.summaries()), many());
    EXPECT_EQ(titles(AwaitedSummaries(support.path()).summaries()), many());
}

TEST_F(OrderOfRecordsTest, ASummaryThatCouldNotBeSavedHasItsPlaceBack) {
    AwaitedSummaries store(support.path());
    auto older = summary("starší", 1h);
    ASSERT_TRUE(store.prijmout(older));
    const auto newer = summary("novější");
    ASSERT_TRUE(store.prijmout(newer));

    breakSaves();
    ++older.revision;
    older.createdAt = newer.createdAt + 1h;
    EXPECT_FALSE(store.prijmout(older));
    EXPECT_EQ(titles(store.summaries()), (Titles{"novější", "starší"}));

    mendSaves();
    older.createdAt = newer.createdAt;
    EXPECT_TRUE(store.prijmout(older));
    EXPECT_EQ(titles(store.summaries()), (Titles{"novější", "starší"})) << "of one date: as they stood";
}

} // namespace
} // namespace morvex
