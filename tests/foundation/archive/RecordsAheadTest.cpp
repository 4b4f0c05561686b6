#include "foundation/archive/RecordsAhead.h"

#include "shared/wire/MorvexNote.h"
#include "tests/support/Effort.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <random>

namespace morvex {
namespace {

using Texts = std::vector<std::string>;
using Standing = SaveQueue::Standing;

class RecordsAheadTest : public testing::Test {
  protected:
    static MorvexNote note(unsigned char id, const std::string& title) {
        MorvexNote note;
        note.id.bytes.fill(id);
        note.title = title;
        return note;
    }

    static Uuid idOf(unsigned char id) { return note(id, "").id; }

    static Texts titles(const RecordsAhead<MorvexNote>::List& list) {
        Texts titles;
        for (const auto& kept : list) titles.push_back(kept.record->title);
        return titles;
    }

    [[nodiscard]] Texts titles() const { return titles(records.all()); }

    RecordsAhead<MorvexNote> records{{note(1, "one"), note(2, "two")}};
};

TEST_F(RecordsAheadTest, AReceivedRecordIsPutBackAndALocalChangeIsNot) {
    records.receive(note(1, "one of the phone"));
    records.change(note(2, "two of mine"));
    records.receive(note(3, "three of the phone"));
    records.change(note(4, "four of mine"));
    records.beginSave();
    records.failed();
    EXPECT_EQ(titles(), (Texts{"one", "two of mine", "four of mine"}));
    EXPECT_EQ(records.find(idOf(4))->title, "four of mine") << "found although a record before it is gone";
}

TEST_F(RecordsAheadTest, OfSeveralVersionsInOneSaveTheLastThatIsOnTheDiskComesBack) {
    records.receive(note(1, "first"));
    records.receive(note(1, "second"));
    records.beginSave();
    records.failed();
    EXPECT_EQ(titles(), (Texts{"one", "two"}));
}

TEST_F(RecordsAheadTest, AVersionThatCameDuringAFailedSaveStaysAndStandsOnWhatWasBefore) {
    records.receive(note(1, "first"));
    records.beginSave();
    records.receive(note(1, "second"));
    records.failed();
    EXPECT_EQ(titles(), (Texts{"second", "two"}));
    records.beginSave();
    records.failed();
    EXPECT_EQ(titles(), (Texts{"one", "two"}));
}

TEST_F(RecordsAheadTest, AVersionThatCameDuringAGoodSaveStandsOnTheSavedOne) {
    records.receive(note(1, "first"));
    records.beginSave();
    records.receive(note(1, "second"));
    records.saved();
    records.beginSave();
    records.failed();
    EXPECT_EQ(titles(), (Texts{"first", "two"}));
    EXPECT_EQ(records.standing(idOf(1)), Standing::saved);
}

TEST_F(RecordsAheadTest, ALocalChangeOfAReceivedRecordMakesItAnOwnOne) {
    records.receive(note(1, "of the phone"));
    records.beginSave();
    records.change(note(1, "mine on top"));
    records.receive(note(1, "of the phone again"));
    records.failed();
    EXPECT_EQ(titles(), (Texts{"of the phone again", "two"}));
    records.beginSave();
    records.failed();
    EXPECT_EQ(titles(), (Texts{"mine on top", "two"}));
    EXPECT_EQ(records.standing(idOf(1)), Standing::waiting);
}

TEST_F(RecordsAheadTest, WithoutReceivedLeavesOutWhatWaitsAndKeepsTheRest) {
    records.receive(note(1, "of the phone"));
    records.receive(note(3, "new"));
    records.change(note(4, "mine"));
    EXPECT_EQ(titles(records.withoutReceived()), (Texts{"one", "two", "mine"}));
    EXPECT_EQ(titles(), (Texts{"of the phone", "two", "new", "mine"}));
}

TEST_F(RecordsAheadTest, CountsTheBytesOfTheFile) {
    records.receive(note(1, std::string(1000, 'x')));
    records.receive(note(3, std::string(10, '"')));
    ArchivedList<MorvexNote> list;
    for (const auto& kept : records.all()) list.records.push_back(*kept.record);
    const auto brackets = 1U; // two, of which one stands for the comma that the last record lacks
    EXPECT_EQ(records.bytes() + brackets, encode(list).size());
    records.beginSave();
    records.failed();
    EXPECT_LT(records.bytes(), 500U);
}

/// What should be there, by the rules in their plainest form: of each record a pile of versions, from which
/// those are taken that a failed save held and that the phone sent.
class Piles {
  public:
    struct Version {
        std::string title;
        bool isOfPhone;
        int save; ///< the number of the save that holds it
    };

    void put(const Uuid& id, const std::string& title, bool isOfPhone) {
        auto& pile = pileOf(id);
        if (!isOfPhone) pile.clear();
        pile.push_back({title, isOfPhone, next_});
    }

    void beginSave() { underWay_ = next_++; }

    void endSave(bool isSaved) {
        for (auto& [id, pile] : piles_) {
            for (auto& version : pile) {
                if (version.save != underWay_) continue;
                version.save = isSaved ? 0 : next_;
                if (!isSaved && version.isOfPhone) version.title.clear();
            }
            std::erase_if(pile, [](const Version& version) { return version.title.empty(); });
        }
        std::erase_if(piles_, [](const auto& entry) { return entry.second.empty(); });
        underWay_ = -1;
    }

    [[nodiscard]] Texts titles() const {
        Texts titles;
        for (const auto& [id, pile] : piles_) titles.push_back(pile.back().title);
        return titles;
    }

    [[nodiscard]] Standing standing(const Uuid& id) const {
        const auto found = std::ranges::find(piles_, id, &Entry::first);
        if (found == piles_.end() || found->second.back().save == 0) return Standing::saved;
        return found->second.back().save == underWay_ ? Standing::underWay : Standing::waiting;
    }

  private:
    using Entry = std::pair<Uuid, std::deque<Version>>;

    std::deque<Version>& pileOf(const Uuid& id) {
        const auto found = std::ranges::find(piles_, id, &Entry::first);
        return found != piles_.end() ? found->second : piles_.emplace_back(id, std::deque<Version>{}).second;
    }

    std::vector<Entry> piles_;
    int next_ = 1;
    int underWay_ = -1;
};

TEST(RecordsAheadHistories, EndAsThePlainRulesSay) {
    std::mt19937_64 chance(seed(4711));
    const auto below = [&](unsigned limit) {
        return std::uniform_int_distribution<unsigned>(0, limit - 1)(chance);
    };
    const auto histories = cases(2'000, 100'000);
    for (std::size_t history = 0; history < histories; ++history) {
        RecordsAhead<MorvexNote> records({});
        Piles piles;
        bool isUnderWay = false;
        for (int step = 0; step < 40; ++step) {
            MorvexNote note;
            note.id.bytes.fill(static_cast<unsigned char>(1 + below(4)));
            note.title = std::to_string(step);
            const auto what = below(5);
            if (what < 2) {
                records.receive(note);
                piles.put(note.id, note.title, true);
            } else if (what == 2) {
                records.change(note);
                piles.put(note.id, note.title, false);
            } else if (!isUnderWay) {
                records.beginSave();
                piles.beginSave();
                isUnderWay = true;
            } else {
                what == 3 ? records.saved() : records.failed();
                piles.endSave(what == 3);
                isUnderWay = false;
            }
            Texts titles;
            for (const auto& kept : records.all()) {
                titles.push_back(kept.record->title);
                ASSERT_EQ(records.standing(kept.record->id), piles.standing(kept.record->id))
                    << "history " << history << ", step " << step;
            }
            ASSERT_EQ(titles, piles.titles()) << "history " << history << ", step " << step;
        }
    }
    tell("Histories of records ahead of their file", histories, "each record as the plain rules say");
}

} // namespace
} // namespace morvex
