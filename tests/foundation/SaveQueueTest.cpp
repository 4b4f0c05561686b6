#include "foundation/SaveQueue.h"

#include "platform/memory/ManualClock.h"
#include "platform/memory/ManualExecutor.h"
#include "shared/base/SystemError.h"
#include "tests/support/HeardLog.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <optional>
#include <string>
#include <vector>

namespace morvex {
namespace {

using namespace std::chrono_literals;
using Texts = std::vector<std::string>;

/// A store that is one text, and a disk that writes when the test lets it.
class SaveQueueTest : public testing::Test {
  protected:
    SaveQueue::Save begin() {
        return {bytes, [this, text = memory]() -> Result<void> {
                    if (isBroken) return fail(TextError{"rozbitý"});
                    written.push_back(text);
                    return {};
                }};
    }

    /// Asks for a save and notes its end under this name.
    void ask(const std::string& name, std::size_t growth = 0) {
        home.start(note(queue.request(growth), name));
        home.runUntilIdle();
    }

    Task<void> note(SaveQueue::Ticket ticket, std::string name) {
        const auto saved = co_await ticket->wait();
        told.push_back(name + (saved ? " saved" : " failed"));
    }

    Task<void> noteSettled() {
        co_await queue.settled();
        told.emplace_back("settled");
    }

    /// One save, if one is under way, and what it leads to.
    void write() {
        home.runUntilIdle();
        disk.runUntilIdle();
        home.runUntilIdle();
    }

    ManualExecutor home;
    ManualExecutor disk;
    ManualClock clock;
    std::string memory;
    std::size_t bytes = 0;
    bool isBroken = false;
    Texts written;
    Texts told;
    SaveQueue queue{{home, disk, clock},
                    {[this] { return begin(); },
                     [this](const Result<void>& saved) { told.emplace_back(saved ? "end" : "end failed"); }}};
};

TEST_F(SaveQueueTest, ASaveHoldsWhatStoodInMemoryWhenItBegan) {
    memory = "a";
    ask("a");
    memory = "b";
    write();
    EXPECT_EQ(written, Texts{"a"});
    EXPECT_EQ(told, (Texts{"end", "a saved"})) << "the store hears of it first";
}

TEST_F(SaveQueueTest, WhatIsAskedForDuringASaveIsGatheredIntoTheNextOne) {
    memory = "a";
    ask("a");
    for (const char* name : {"b", "c", "d"}) {
        memory = name;
        ask(name);
    }
    EXPECT_TRUE(told.empty());
    write();
    EXPECT_EQ(told, (Texts{"end", "a saved"})) << "the others wait for the save that holds them";
    write();
    EXPECT_EQ(written, (Texts{"a", "d"}));
    EXPECT_EQ(told, (Texts{"end", "a saved", "end", "b saved", "c saved", "d saved"}));
    write();
    EXPECT_EQ(written.size(), 2U) << "nobody asked for more";
}

TEST_F(SaveQueueTest, AFailureIsToldToThoseWhoWaitedForThatSaveAndToNobodyElse) {
    isBroken = true;
    ask("a");
    ask("b");
    write();
    isBroken = false;
    write();
    EXPECT_EQ(told, (Texts{"end failed", "a failed", "end", "b saved"}));
}

TEST_F(SaveQueueTest, ALargeFileThatGrowsSlowlyWaitsForThePauseAndThenSavesOnce) {
    bytes = 1'000'000;
    ask("first");
    write();
    clock.advance(1ms);
    ask("b", 10);
    ask("c", 10);
    write();
    EXPECT_EQ(written.size(), 1U);
    clock.advance(SaveQueue::pause);
    home.runUntilIdle();
    write();
    EXPECT_EQ(written.size(), 2U);
    EXPECT_EQ(told.back(), "c saved");
}

TEST_F(SaveQueueTest, ALargeFileThatWasLeftAloneIsSavedAtOnce) {
    bytes = 1'000'000;
    ask("first");
    write();
    clock.advance(SaveQueue::pause);
    ask("b", 10);
    write();
    EXPECT_EQ(told.back(), "b saved");
}

TEST_F(SaveQueueTest, AQuarterThatIsNewEndsThePause) {
    bytes = 1'000'000;
    ask("first");
    write();
    ask("b", 125'000);
    write();
    EXPECT_EQ(written.size(), 1U);
    ask("c", 125'000);
    write();
    EXPECT_EQ(told.back(), "c saved");
}

TEST_F(SaveQueueTest, AHurryEndsThePauseAndTheNextPauseIsWhole) {
    bytes = 1'000'000;
    ask("first");
    write();
    ask("b");
    queue.hurry();
    write();
    EXPECT_EQ(told.back(), "b saved");
    ask("c");
    write();
    EXPECT_EQ(told.back(), "b saved") << "the hurry was for what waited then";
    clock.advance(SaveQueue::pause);
    home.runUntilIdle();
    write();
}

TEST_F(SaveQueueTest, ASmallFileIsNeverWaitedWith) {
    bytes = SaveQueue::smallFile;
    ask("first");
    write();
    ask("b");
    write();
    EXPECT_EQ(told.back(), "b saved");
}

TEST_F(SaveQueueTest, SettledWaitsForWhatWasAskedForAndHurriesIt) {
    bytes = 1'000'000;
    EXPECT_TRUE(home.run(queue.settled())) << "nothing waits";
    ask("first");
    ask("second");
    home.start(noteSettled());
    home.runUntilIdle();
    ask("third");
    write();
    EXPECT_EQ(told, (Texts{"end", "first saved"}));
    write();
    EXPECT_EQ(told, (Texts{"end", "first saved", "end", "second saved", "settled", "third saved"}));
}

TEST_F(SaveQueueTest, AChangeIsOnTheDiskWithTheSaveThatHoldsIt) {
    using enum SaveQueue::Standing;
    EXPECT_EQ(home.run(queue.onDisk(saved)), true);
    ask("a");
    auto duringSave = queue.onDisk(underWay);
    auto later = queue.onDisk(waiting);
    write();
    EXPECT_EQ(home.run(std::move(duringSave)), true);
    isBroken = true;
    write();
    EXPECT_EQ(home.run(std::move(later)), false);
}

TEST_F(SaveQueueTest, TheSystemsOwnWordsOfAFailureGoToTheLog) {
    HeardLog log;
    const auto failing = []() -> Result<void> { return fail(SystemError{ENOSPC}); };
    SaveQueue other({home, disk, clock},
                    {[failing] { return SaveQueue::Save{0, failing}; }, [](const Result<void>&) {}});
    (void)other.request(0);
    write();
    EXPECT_EQ(log.lines(), Texts{"saving: No space left on device"});
}

TEST_F(SaveQueueTest, AStoreThatIsDestroyedBeforeItWasSavedEndsTheProcess) {
    EXPECT_DEATH(
        {
            SaveQueue other({home, disk, clock}, {[this] { return begin(); }, [](const Result<void>&) {}});
            (void)other.request(0);
            (void)other.request(0);
        },
        "destroyed before it was saved");
}

} // namespace
} // namespace morvex
