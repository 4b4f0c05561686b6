#include "app/personal/PoznamkyStore.h"
#include "platform/memory/ManualExecutor.h"
#include "tests/app/personal/PersonalStores.h"

#include <optional>

namespace morvex {
namespace {

using Titles = std::vector<std::string>;

/// A notes store whose disk writes when the test lets it.
class PoznamkyAheadTest : public PersonalStores {
  protected:
    PoznamkyAheadTest() {
        connection = store.priZmene([this](const MorvexNote& note) { changes.push_back(note.title); });
    }

    ~PoznamkyAheadTest() override {
        while (home.runUntilIdle() + disk.runUntilIdle() > 0) continue;
    }

    MorvexNote fromPhone(const std::string& title, std::uint64_t revision = 1) {
        return {random.uuid(), title, "z telefonu", clock.now(), clock.now(), revision, {}};
    }

    /// Receives a note; its answer comes later.
    std::shared_ptr<std::optional<bool>> receive(MorvexNote note) {
        auto taken = std::make_shared<std::optional<bool>>();
        home.start(keep(store.prijmout(std::move(note)), taken));
        home.runUntilIdle();
        return taken;
    }

    template <class T> static Task<void> keep(Task<T> task, std::shared_ptr<std::optional<T>> value) {
        value->emplace(co_await std::move(task));
    }

    std::shared_ptr<std::optional<Result<MorvexNote>>> begin(Task<Result<MorvexNote>> change) {
        auto changed = std::make_shared<std::optional<Result<MorvexNote>>>();
        home.start(keep(std::move(change), changed));
        home.runUntilIdle();
        return changed;
    }

    /// One save.
    void write() {
        disk.runUntilIdle();
        home.runUntilIdle();
    }

    static Titles titles(const std::vector<MorvexNote>& notes) {
        Titles titles;
        for (const auto& note : notes) titles.push_back(note.title);
        return titles;
    }

    ManualExecutor home;
    ManualExecutor disk;
    PoznamkyStore store{support.path(), {home, disk, clock}, random};
    Titles changes;
    Connection connection;
};

TEST_F(PoznamkyAheadTest, WhatIsShownAndFoundIsOnTheDisk) {
    auto taken = receive(fromPhone("Nová"));
    EXPECT_EQ(titles(store.vsechny()), Titles{"Nová"});
    EXPECT_TRUE(store.notes().empty());
    EXPECT_TRUE(store.hledat("", 10).empty());
    write();
    EXPECT_EQ(*taken, true);
    EXPECT_EQ(store.hledat("", 10).size(), 1U);
}

TEST_F(PoznamkyAheadTest, ALocalChangeAnswersAndIsToldWhenItIsOnTheDisk) {
    auto made = begin(store.vytvorit("Nová", "obsah"));
    EXPECT_FALSE(made->has_value());
    EXPECT_TRUE(changes.empty());
    write();
    ASSERT_TRUE(made->has_value());
    EXPECT_TRUE((*made)->has_value());
    EXPECT_EQ(changes, Titles{"Nová"});
}

TEST_F(PoznamkyAheadTest, AVersionThatComesTwiceIsTakenTwiceAtTheEndOfOneSave) {
    const auto note = fromPhone("Nová");
    auto first = receive(note);
    auto second = receive(note);
    EXPECT_FALSE(second->has_value()) << "it is not on the disk yet";
    write();
    EXPECT_EQ(*first, true);
    EXPECT_EQ(*second, true);
    EXPECT_EQ(disk.runUntilIdle(), 0);
}

TEST_F(PoznamkyAheadTest, AnOldVersionIsNotTakenWhileTheOneThatCountsCannotBeSaved) {
    breakSaves();
    auto made = begin(store.vytvorit("Místní", "obsah"));
    write();
    ASSERT_TRUE(made->has_value());
    EXPECT_FALSE((*made)->has_value());
    auto old = store.vsechny()[0];
    old.revision = 0;
    auto taken = receive(old);
    write();
    EXPECT_EQ(*taken, false);
    mendSaves();
    taken = receive(old);
    write();
    EXPECT_EQ(*taken, true);
    EXPECT_EQ(titles(store.notes()), Titles{"Místní"});
}

TEST_F(PoznamkyAheadTest, AFailedSavePutsBackWhatItHeldAndKeepsWhatCameMeanwhile) {
    breakSaves();
    auto note = fromPhone("první");
    auto first = receive(note);
    ++note.revision;
    note.title = "druhá";
    auto second = receive(note);
    auto other = begin(store.vytvorit("Místní", "obsah"));
    write();
    EXPECT_EQ(*first, false);
    EXPECT_FALSE(second->has_value());
    EXPECT_EQ(titles(store.vsechny()), (Titles{"druhá", "Místní"}));
    EXPECT_EQ(titles(store.notes()), Titles{"Místní"}) << "what waits is not shown";
    EXPECT_TRUE(store.problem());
    mendSaves();
    write();
    EXPECT_EQ(*second, true);
    EXPECT_EQ(titles(store.notes()).size(), 2U);
    EXPECT_FALSE(store.problem());
}

TEST_F(PoznamkyAheadTest, ALocalChangeOnTopOfAReceivedNoteIsNeverPutBack) {
    breakSaves();
    auto taken = receive(fromPhone("z telefonu"));
    auto changed = begin(store.upravit("z telefonu", "moje", {}));
    write();
    write();
    EXPECT_EQ(*taken, false);
    EXPECT_FALSE((*changed)->has_value());
    EXPECT_EQ(titles(store.vsechny()), Titles{"moje"});
    mendSaves();
    auto saved = begin(store.upravit("moje", {}, "text"));
    write();
    EXPECT_TRUE((*saved)->has_value());
    EXPECT_EQ(titles(store.notes()), Titles{"moje"});
}

TEST_F(PoznamkyAheadTest, AFailedSaveOfLocalChangesAloneIsNoProblemOfThePhone) {
    breakSaves();
    auto made = begin(store.vytvorit("Místní", "obsah"));
    write();
    EXPECT_FALSE((*made)->has_value());
    EXPECT_FALSE(store.problem());
    EXPECT_TRUE(store.notes().empty());
}

} // namespace
} // namespace morvex
