#include "shared/base/SystemError.h"
#include "tests/app/personal/PersonalStores.h"
#include "tests/support/AwaitedStores.h"
#include "tests/support/PlainUser.h"

#include <cerrno>
#include <sys/stat.h>

namespace morvex {
namespace {

using namespace std::chrono_literals;

class SouhrnyStoreTest : public PersonalStores {
  protected:
    SouhrnyStoreTest() {
        connection = store.onChange([this] { ++viewChanges; });
    }

    MorvexSummary summary(const std::string& title, Clock::Duration age = 0s, std::uint64_t revision = 1) {
        auto created = clock.now() - std::chrono::duration_cast<Date::duration>(age);
        return {random.uuid(),        title,   "shrnutí", created, created - 24h, created,
                {"mail", "kalendář"}, revision};
    }

    static ino_t inode(const std::filesystem::path& file) {
        struct stat found{};
        EXPECT_EQ(::stat(file.c_str(), &found), 0);
        return found.st_ino;
    }

    [[nodiscard]] AwaitedSummaries reloaded() const { return AwaitedSummaries(support.path()); }

    static std::vector<std::string> titles(const std::vector<MorvexSummary>& summaries) {
        std::vector<std::string> titles;
        for (const auto& one : summaries) titles.push_back(one.title);
        return titles;
    }

    using Titles = std::vector<std::string>;

    std::filesystem::path file = folder / "summaries-from-iphone.json";
    AwaitedSummaries store = reloaded();
    int viewChanges = 0;
    Connection connection;
};

TEST_F(SouhrnyStoreTest, ASummaryIsKeptShownAndReadAgain) {
    auto first = summary("Týden");
    EXPECT_TRUE(store.prijmout(first));
    EXPECT_EQ(store.summaries(), std::vector{first});
    EXPECT_EQ(reloaded().summaries(), std::vector{first});
    EXPECT_EQ(viewChanges, 1);
    EXPECT_FALSE(store.problem());
}

TEST_F(SouhrnyStoreTest, TheFileIsOneObjectWithNumericDates) {
    clock.setWallClock(dateFromSeconds(978'307'200 + 86'400));
    ASSERT_TRUE(store.prijmout(summary("Den")));
    EXPECT_EQ(textIn(file),
              R"({"schemaVersion":1,"summaries":[{"id":"00000000-0000-4000-8000-000000000001","title":"Den",)"
              R"("body":"shrnutí","createdAt":86400,"periodStart":0,"periodEnd":86400,)"
              R"("sources":["mail","kalendář"],"revision":1}]})");
}

TEST_F(SouhrnyStoreTest, TheNewestComesFirstWhateverCameWhen) {
    ASSERT_TRUE(store.prijmout(summary("nová")));
    ASSERT_TRUE(store.prijmout(summary("stará", 9h)));
    ASSERT_TRUE(store.prijmout(summary("střední", 5h)));
    ASSERT_TRUE(store.prijmout(summary("také nová")));
    const Titles expected{"nová", "také nová", "střední", "stará"};
    EXPECT_EQ(titles(store.summaries()), expected);
    EXPECT_EQ(titles(reloaded().summaries()), expected);
}

TEST_F(SouhrnyStoreTest, AnArchiveInAnotherOrderIsSortedAtTheStart) {
    put(file, R"({"schemaVersion":1,"summaries":[)"
              R"({"id":"00000000-0000-4000-8000-000000000001","title":"stará","body":"","createdAt":1,)"
              R"("periodStart":0,"periodEnd":0,"sources":[],"revision":1},)"
              R"({"id":"00000000-0000-4000-8000-000000000002","title":"nová","body":"","createdAt":2,)"
              R"("periodStart":0,"periodEnd":0,"sources":[],"revision":1}]})");
    EXPECT_EQ(titles(reloaded().summaries()), (Titles{"nová", "stará"}));
}

TEST_F(SouhrnyStoreTest, AHigherRevisionReplacesAndMovesToItsPlace) {
    auto first = summary("první");
    ASSERT_TRUE(store.prijmout(first));
    ASSERT_TRUE(store.prijmout(summary("druhá", 1h)));
    first.revision = 2;
    first.title = "první znovu";
    first.createdAt -= 2h;
    EXPECT_TRUE(store.prijmout(first));
    EXPECT_EQ(titles(store.summaries()), (Titles{"druhá", "první znovu"}));
}

TEST_F(SouhrnyStoreTest, EqualRevisionsKeepTheStoredOneEvenALaterText) {
    auto first = summary("první");
    ASSERT_TRUE(store.prijmout(first));
    const auto saved = inode(file);
    auto again = first;
    again.title = "jiný text";
    again.createdAt += 1h;
    EXPECT_TRUE(store.prijmout(again));
    EXPECT_EQ(inode(file), saved) << "saved once: a save puts another file in its place";
    again.revision = 0;
    EXPECT_TRUE(store.prijmout(again));
    EXPECT_EQ(inode(file), saved);
    EXPECT_EQ(store.summaries(), std::vector{first});
    EXPECT_EQ(viewChanges, 1);
    again.revision = 2;
    EXPECT_TRUE(store.prijmout(again));
    EXPECT_NE(inode(file), saved);
}

TEST_F(SouhrnyStoreTest, ASummaryThatCannotBeSavedChangesNothingAndIsToldOf) {
    auto first = summary("první");
    ASSERT_TRUE(store.prijmout(first));
    breakSaves();
    auto newer = first;
    newer.revision = 2;
    EXPECT_FALSE(store.prijmout(newer));
    EXPECT_FALSE(store.prijmout(summary("druhá")));
    EXPECT_TRUE(store.prijmout(first)) << "what does not count needs no save";
    EXPECT_EQ(store.summaries(), std::vector{first});
    EXPECT_TRUE(store.problem());
    EXPECT_EQ(viewChanges, 2);

    mendSaves();
    EXPECT_TRUE(store.prijmout(newer));
    EXPECT_FALSE(store.problem());
    EXPECT_EQ(reloaded().summaries(), std::vector{newer});
}

TEST_F(SouhrnyStoreTest, TheProblemIsTheErrorOfTheSaveThatFailedLast) {
    ASSERT_TRUE(store.prijmout(summary("první")));
    breakSaves();
    EXPECT_FALSE(store.prijmout(summary("druhá")));
    EXPECT_EQ(store.problem(), SystemError{ENOTDIR}.popis().czech());
    mendSaves();
    lockSaves();
    const PlainUser user;
    EXPECT_FALSE(store.prijmout(summary("druhá")));
    EXPECT_EQ(store.problem(), SystemError{EACCES}.popis().czech());
}

TEST_F(SouhrnyStoreTest, WhatWasTakenIsStillThereAtTheNextStartAndWhatCouldNotBeIsRefused) {
    Titles taken;
    for (const char* title : {"a", "b", "c", "d", "e", "f"}) {
        auto full = summary(title);
        full.sources.resize(40'000);
        if (store.prijmout(std::move(full))) taken.emplace_back(title);
    }
    EXPECT_GT(taken.size(), 1U);
    EXPECT_LT(taken.size(), 6U);
    EXPECT_EQ(store.problem(), "Zpráva má příliš mnoho hodnot.");
    EXPECT_EQ(titles(store.summaries()), taken);
    EXPECT_EQ(titles(reloaded().summaries()), taken);
}

TEST_F(SouhrnyStoreTest, ABadArchiveCountsAsNoneAndIsKeptAsideBeforeTheNextSave) {
    for (const char* text : {"", "ne", R"({"schemaVersion":2,"summaries":[]})",
                             R"({"schemaVersion":1,"summaries":{}})", R"({"schemaVersion":1})"}) {
        std::filesystem::remove_all(folder);
        put(file, text);
        auto opened = reloaded();
        EXPECT_TRUE(opened.summaries().empty()) << text;
        EXPECT_FALSE(opened.problem()) << text;
        auto only = summary("první");
        EXPECT_TRUE(opened.prijmout(only));
        EXPECT_EQ(reloaded().summaries(), std::vector{only}) << text;
        EXPECT_EQ(textIn(file.string() + ".damaged"), text);
    }
}

} // namespace
} // namespace morvex
