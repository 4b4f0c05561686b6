#include "phone/PhoneTasks.h"

#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

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

TEST(PhoneTasks, ALaterTaskUnderTheSameIdReplacesTheOlderOneWhateverItsRevision) {
    TemporaryFolder folder;
    auto tasks = PhoneTasks::load(folder.path());
    auto older = item(1, 9, 20, "starší");
    auto newer = item(1, 1, 30, "novější");
    older.createdAt = dateFromSeconds(10);
    newer.createdAt = dateFromSeconds(11);
    EXPECT_TRUE(tasks.take(older));
    EXPECT_TRUE(tasks.take(newer));
    EXPECT_EQ(tasks.items(), std::vector{newer});
    newer.revision = 2;
    EXPECT_TRUE(tasks.take(newer));
    EXPECT_EQ(PhoneTasks::load(folder.path()).items(), std::vector{newer});
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
