#include "phone/PhoneTasks.h"

#include "shared/wire/Json.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

namespace morvex {
namespace {

WorkItem item(std::uint8_t id, std::uint64_t revision, std::int64_t updatedAt,
              const std::string& title = "x") {
    WorkItem item;
    item.id.bytes[15] = id;
    item.revision = revision;
    item.updatedAt = dateFromSeconds(updatedAt);
    item.title = title;
    return item;
}

TEST(PhoneTasks, KeepsTheLatestRevisionOverARestart) {
    TemporaryFolder folder;
    auto tasks = PhoneTasks::load(folder.path());
    EXPECT_TRUE(tasks.take(item(1, 2, 20, "dva")));
    EXPECT_TRUE(tasks.take(item(1, 1, 10, "jedna")));
    EXPECT_TRUE(tasks.take(item(1, 2, 20, "jiná dvojka")));
    EXPECT_EQ(tasks.items(), std::vector{item(1, 2, 20, "dva")});
    EXPECT_TRUE(tasks.take(item(1, 3, 30, "tři")));
    EXPECT_EQ(PhoneTasks::load(folder.path()).items(), std::vector{item(1, 3, 30, "tři")});
}

TEST(PhoneTasks, OfTwoTasksUnderOneIdTheOneThatChangedLastStaysInWhicheverOrderTheyCome) {
    auto older = item(1, 9, 20, "starší");
    older.createdAt = dateFromSeconds(10);
    auto newer = item(1, 1, 30, "novější");
    newer.createdAt = dateFromSeconds(11);
    auto sameMoment = item(1, 1, 20, "v téže vteřině");
    sameMoment.createdAt = dateFromSeconds(20);
    auto again = item(1, 10, 40, "starší pokračuje");
    again.createdAt = older.createdAt;
    const std::vector<std::vector<WorkItem>> rows{
        {older, newer}, {older, sameMoment}, {newer, again}, {older, newer, again}};
    for (auto row : rows) {
        const auto wanted = std::vector{row.back()};
        std::ranges::sort(row, {}, &WorkItem::title);
        do {
            TemporaryFolder folder;
            auto tasks = PhoneTasks::load(folder.path());
            for (const auto& told : row) EXPECT_TRUE(tasks.take(told));
            EXPECT_EQ(tasks.items(), wanted) << row.front().title << " came first";
            EXPECT_EQ(PhoneTasks::load(folder.path()).items(), wanted);
        } while (std::ranges::next_permutation(row, {}, &WorkItem::title).found);
    }
}

TEST(PhoneTasks, TheOldestGoWhenTheFileWouldGrowTooLong) {
    TemporaryFolder folder;
    auto tasks = PhoneTasks::load(folder.path(), 2500);
    for (std::uint8_t id = 1; id <= 4; ++id)
        EXPECT_TRUE(tasks.take(item(id, 1, id, std::string(700, 'x')))) << int{id};
    EXPECT_EQ(tasks.items().front().id, item(4, 1, 4).id);
    EXPECT_LT(tasks.items().size(), 4U);
    EXPECT_EQ(PhoneTasks::load(folder.path()).items(), tasks.items());
}

TEST(PhoneTasks, ALoadedListIsPutInOrderAndCut) {
    TemporaryFolder folder;
    std::vector<WorkItem> written;
    for (std::uint8_t id = 0; id < PhoneTasks::maximum + 1; ++id) written.push_back(item(id, 1, id));
    std::ofstream(folder.path() / "tasks.json") << encode(written);
    const auto tasks = PhoneTasks::load(folder.path());
    EXPECT_EQ(tasks.items().size(), PhoneTasks::maximum);
    EXPECT_EQ(tasks.items().front(), written.back());
    EXPECT_EQ(tasks.items().back(), written[1]);
}

TEST(PhoneTasks, TheOneThatChangedLastComesFirstAndTheOldestGoes) {
    TemporaryFolder folder;
    auto tasks = PhoneTasks::load(folder.path());
    for (auto time : {30, 10, 20}) EXPECT_TRUE(tasks.take(item(static_cast<std::uint8_t>(time), 1, time)));
    EXPECT_EQ(tasks.items(), (std::vector{item(30, 1, 30), item(20, 1, 20), item(10, 1, 10)}));
    for (std::uint8_t id = 100; id < 100 + PhoneTasks::maximum; ++id)
        EXPECT_TRUE(tasks.take(item(id, 1, id)));
    EXPECT_EQ(tasks.items().size(), PhoneTasks::maximum);
    EXPECT_EQ(tasks.items().back().id, item(100, 1, 100).id);
}

TEST(PhoneTasks, WhatCannotBeSavedIsNotTakenUntilItCan) {
    TemporaryFolder folder;
    auto blocked = folder.path() / "data";
    std::ofstream(blocked) << "v cestě";
    auto tasks = PhoneTasks::load(blocked);
    EXPECT_FALSE(tasks.take(item(1, 1, 10)));
    EXPECT_FALSE(tasks.take(item(1, 1, 10)));
    std::filesystem::remove(blocked);
    EXPECT_TRUE(tasks.take(item(1, 1, 10)));
    EXPECT_EQ(PhoneTasks::load(blocked).items().size(), 1U);
}

TEST(PhoneTasks, ADamagedFileIsKeptAside) {
    TemporaryFolder folder;
    std::ofstream(folder.path() / "tasks.json") << "poškozeno";
    auto tasks = PhoneTasks::load(folder.path());
    EXPECT_TRUE(tasks.items().empty());
    EXPECT_TRUE(tasks.take(item(1, 1, 10)));
    EXPECT_TRUE(std::filesystem::exists(folder.path() / "tasks.json.damaged"));
}

} // namespace
} // namespace morvex
