#include "platform/posix/base/AtomicFile.h"
#include "tests/support/ImmediateDefaults.h"
#include "tests/support/SlowDefaults.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace morvex {
namespace {

using namespace std::chrono_literals;

class SlowJsonDefaultsTest : public testing::Test, public SlowDefaults {
  protected:
    bool end() {
        home.start(note());
        write();
        write();
        return ended_;
    }

    Task<void> note() {
        co_await defaults.shutDown();
        ended_ = true;
    }

    /// Proposes `key` as true and notes the end.
    void propose(const std::string& key) {
        home.start(noteProposal(key));
        home.runUntilIdle();
    }

    Task<void> noteProposal(std::string key) {
        DefaultsValues values;
        values.emplace(key, true);
        const auto saved = co_await defaults.setOnceSaved(std::move(values));
        told.push_back(key + (saved ? " saved" : " failed: " + saved.error().popis().czech()));
    }

    bool ended_ = false;
    std::vector<std::string> told;
};

TEST_F(SlowJsonDefaultsTest, AChangeCountsAtOnceAndIsWrittenOnTheOtherThread) {
    defaults.set("key", true);
    home.runUntilIdle();
    EXPECT_EQ(defaults.boolean("key"), true);
    EXPECT_FALSE(std::filesystem::exists(path));
    disk.runUntilIdle();
    EXPECT_EQ(kept().boolean("key"), true);
    write();
}

TEST_F(SlowJsonDefaultsTest, ChangesDuringASaveGoTogetherIntoTheNext) {
    defaults.set("first", true);
    home.runUntilIdle();
    defaults.set("second", true);
    defaults.set("third", true);
    defaults.remove("first");
    disk.runUntilIdle();
    EXPECT_EQ(kept().boolean("first"), true);
    EXPECT_FALSE(kept().boolean("second"));
    home.runUntilIdle();
    EXPECT_EQ(disk.runUntilIdle(), 1);
    EXPECT_FALSE(kept().boolean("first"));
    EXPECT_EQ(kept().boolean("second"), true);
    EXPECT_EQ(kept().boolean("third"), true);
    write();
}

TEST_F(SlowJsonDefaultsTest, WhatIsSetAndRemovedTogetherIsInOneSave) {
    defaults.setTogether({{"account.1", true}, {"account.2", true}});
    write();
    defaults.changeTogether({{"account.3", true}}, {"account.1", "account.2", "never there"});
    home.runUntilIdle();
    EXPECT_EQ(disk.runUntilIdle(), 1);
    EXPECT_FALSE(kept().boolean("account.1"));
    EXPECT_FALSE(kept().boolean("account.2"));
    EXPECT_EQ(kept().boolean("account.3"), true);
    home.runUntilIdle();
    EXPECT_EQ(disk.runUntilIdle(), 0);
}

TEST_F(SlowJsonDefaultsTest, TheEndWaitsForWhatIsLeftAndNothingIsSavedBehindIt) {
    defaults.set("first", true);
    home.runUntilIdle();
    defaults.set("second", true);
    EXPECT_TRUE(end());
    EXPECT_EQ(kept().boolean("second"), true);
    defaults.set("third", true);
    propose("fourth");
    write();
    EXPECT_EQ(defaults.boolean("third"), true);
    EXPECT_FALSE(kept().boolean("third"));
    EXPECT_EQ(told, std::vector<std::string>{"fourth failed: Operace skončila dřív, než dala výsledek."});
}

TEST_F(SlowJsonDefaultsTest, TheEndTriesOnceMoreAndDoesNotWaitForADiskThatFails) {
    breakSaves();
    defaults.set("key", true);
    write();
    ASSERT_TRUE(defaults.problem());
    EXPECT_TRUE(end());
    EXPECT_TRUE(defaults.problem());
    clock.advance(JsonDefaults::retryDelay);
    EXPECT_EQ(home.runUntilIdle(), 0);
}

TEST_F(SlowJsonDefaultsTest, AProposalCountsOnceItIsSaved) {
    propose("key");
    EXPECT_FALSE(defaults.boolean("key"));
    write();
    EXPECT_EQ(defaults.boolean("key"), true);
    EXPECT_EQ(kept().boolean("key"), true);
    EXPECT_EQ(told, std::vector<std::string>{"key saved"});
}

/// It may have come to the disk all the same, by a save that failed at its very end.
TEST_F(SlowJsonDefaultsTest, AProposalThatCannotBeSavedIsGoneAndTheFileIsWrittenWithoutIt) {
    breakSaves();
    propose("key");
    write();
    EXPECT_FALSE(defaults.boolean("key"));
    ASSERT_EQ(told.size(), 1U);
    EXPECT_TRUE(told[0].starts_with("key failed: ")) << told[0];
    EXPECT_TRUE(defaults.problem());
    mendSaves();
    retry();
    EXPECT_FALSE(defaults.problem());
    EXPECT_TRUE(std::filesystem::exists(path));
    EXPECT_FALSE(kept().boolean("key"));
}

TEST_F(SlowJsonDefaultsTest, AskingWhetherAllIsSavedTriesAgain) {
    breakSaves();
    defaults.set("key", true);
    write();
    mendSaves();
    home.start(defaults.saved());
    write();
    EXPECT_FALSE(defaults.problem());
    EXPECT_EQ(kept().boolean("key"), true);
}

TEST_F(SlowJsonDefaultsTest, AChangeBesideARefusedProposalIsTriedAgainWithoutIt) {
    breakSaves();
    propose("wider");
    defaults.set("narrower", true);
    write();
    write();
    EXPECT_TRUE(defaults.problem());
    mendSaves();
    retry();
    EXPECT_FALSE(defaults.problem());
    EXPECT_EQ(kept().boolean("narrower"), true);
    EXPECT_FALSE(kept().boolean("wider"));
}

TEST_F(SlowJsonDefaultsTest, AChangeEndsTheProposalsOfItsValueThatWait) {
    defaults.set("busy", true);
    home.runUntilIdle();
    propose("key");
    propose("other");
    defaults.set("key", false);
    write();
    write();
    EXPECT_EQ(kept().boolean("key"), false);
    EXPECT_EQ(kept().boolean("other"), true);
    EXPECT_EQ(told, (std::vector<std::string>{"key failed: Nastavení se mezitím změnilo.", "other saved"}));
}

TEST_F(SlowJsonDefaultsTest, AnEqualChangeEndsTheProposalWhoseSaveIsUnderWayAlsoOnTheDisk) {
    defaults.set("key", false);
    write();
    propose("key");
    disk.runUntilIdle();
    ASSERT_EQ(kept().boolean("key"), true);
    defaults.set("key", false);
    write();
    write();
    EXPECT_EQ(defaults.boolean("key"), false);
    EXPECT_EQ(kept().boolean("key"), false);
    EXPECT_EQ(told, std::vector<std::string>{"key failed: Nastavení se mezitím změnilo."});
}

TEST_F(SlowJsonDefaultsTest, ALaterProposalEndsTheOneOfItsValueThatWaits) {
    defaults.set("busy", true);
    home.runUntilIdle();
    propose("key");
    propose("key");
    write();
    write();
    EXPECT_EQ(kept().boolean("key"), true);
    EXPECT_EQ(told, (std::vector<std::string>{"key failed: Nastavení se mezitím změnilo.", "key saved"}));
}

TEST_F(SlowJsonDefaultsTest, ARemovalEndsTheProposalWhoseSaveIsUnderWay) {
    propose("key");
    defaults.remove("key");
    write();
    write();
    EXPECT_FALSE(defaults.boolean("key"));
    EXPECT_FALSE(kept().boolean("key"));
    EXPECT_EQ(told, std::vector<std::string>{"key failed: Nastavení se mezitím změnilo."});
}

TEST_F(SlowJsonDefaultsTest, AFailedSaveIsTriedAgainAfterFiveSeconds) {
    breakSaves();
    defaults.set("key", true);
    write();
    mendSaves();
    clock.advance(4999ms);
    write();
    EXPECT_TRUE(defaults.problem());
    clock.advance(1ms);
    write();
    EXPECT_FALSE(defaults.problem());
    EXPECT_EQ(kept().boolean("key"), true);
}

TEST_F(SlowJsonDefaultsTest, AFileThatIsLeftAloneRefusesProposals) {
    breakSaves();
    ImmediateDefaults unreadable(folder.path());
    DefaultsValues values;
    values.emplace("key", true);
    const auto saved = home.run(unreadable.setOnceSaved(std::move(values)));
    ASSERT_TRUE(saved.has_value());
    ASSERT_FALSE(*saved);
    EXPECT_EQ(saved->error().popis().czech(), unreadable.problem());
}

} // namespace
} // namespace morvex
