#include "app/ui/models/RowList.h"

#include <QSignalSpy>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace morvex {
namespace {

class RowListTest : public testing::Test {
  protected:
    static QVariantMap row(const char* id, int text = 0) {
        return {{QStringLiteral("id"), QString::fromUtf8(id)}, {QStringLiteral("text"), text}};
    }

    void change(const QVariantList& to) {
        rows = to;
        owner.refresh();
    }

    std::string ids() const {
        std::string all;
        for (int at = 0; at < list.rowCount(); ++at)
            all += list.data(list.index(at), Qt::UserRole)
                       .toMap()[QStringLiteral("id")]
                       .toString()
                       .toStdString();
        return all;
    }

    ViewModel owner;
    QVariantList rows{row("a"), row("b"), row("c")};
    RowList list{owner, [this] { return rows; }};
    QSignalSpy inserted{&list, &RowList::rowsInserted};
    QSignalSpy removed{&list, &RowList::rowsRemoved};
    QSignalSpy moved{&list, &RowList::rowsMoved};
    QSignalSpy changed{&list, &RowList::dataChanged};
    QSignalSpy counted{&list, &RowList::countChanged};
    QSignalSpy renewed{&list, &RowList::modelReset};
};

TEST_F(RowListTest, ReadsAtFirst) {
    EXPECT_EQ(ids(), "abc");
}

TEST_F(RowListTest, TellsNothingWhenNothingIsDifferent) {
    change(rows);
    EXPECT_TRUE(inserted.empty() && removed.empty() && moved.empty() && changed.empty() && counted.empty());
}

TEST_F(RowListTest, TellsOfTheOneRowThatIsDifferent) {
    change({row("a"), row("b", 1), row("c")});
    ASSERT_EQ(changed.size(), 1);
    EXPECT_EQ(changed[0][0].toModelIndex().row(), 1);
    EXPECT_TRUE(inserted.empty() && removed.empty() && moved.empty() && counted.empty());
}

TEST_F(RowListTest, LeavesTheOthersStandingWhenOneComesGoesOrMoves) {
    change({row("n"), row("a"), row("b"), row("c")});
    EXPECT_EQ(ids(), "nabc");
    EXPECT_EQ(inserted.size(), 1);
    change({row("n"), row("a"), row("c")});
    EXPECT_EQ(ids(), "nac");
    EXPECT_EQ(removed.size(), 1);
    change({row("c"), row("n"), row("a")});
    EXPECT_EQ(ids(), "cna");
    EXPECT_EQ(moved.size(), 1);
    EXPECT_EQ(counted.size(), 2) << "a move leaves the number as it is";
    EXPECT_TRUE(changed.empty());
}

TEST_F(RowListTest, TellsOnceOfRowsThatComeOrGoTogether) {
    change({row("a"), row("x"), row("y"), row("z"), row("b"), row("c")});
    EXPECT_EQ(ids(), "axyzbc");
    EXPECT_EQ(inserted.size(), 1);
    change({row("a"), row("c")});
    EXPECT_EQ(ids(), "ac");
    EXPECT_EQ(removed.size(), 1);
}

TEST_F(RowListTest, MovesARowThatGoesDownAndNotAllOthersUp) {
    change({row("b"), row("n"), row("c"), row("a"), row("o")});
    EXPECT_EQ(ids(), "bncao");
    EXPECT_EQ(moved.size(), 1);
    EXPECT_EQ(inserted.size(), 2);
    EXPECT_TRUE(removed.empty() && changed.empty());
}

TEST_F(RowListTest, TellsOfNewRowsWhereTheChangesWouldTakeTooManySteps) {
    QVariantList many;
    for (int number = 0; number < 10'000; ++number) many.push_back(row(std::to_string(number).c_str()));
    change(many);
    EXPECT_TRUE(renewed.empty());
    std::ranges::reverse(many);
    change(many);
    QVariantList every;
    for (int number = 0; number < 10'000; number += 2) every.push_back(many[number]);
    change(every);
    EXPECT_EQ(renewed.size(), 2);
    EXPECT_LE(inserted.size() + removed.size() + moved.size(), 300);
    for (int at = 0; at < list.rowCount(); ++at)
        EXPECT_EQ(list.data(list.index(at), Qt::UserRole), every[at]);
    EXPECT_EQ(list.rowCount(), every.size());
}

TEST_F(RowListTest, EndsRightAlsoWithTwoRowsOfOneId) {
    for (const auto& next : {QVariantList{row("a"), row("a", 1), row("b")},
                             {row("b"), row("a")},
                             {row("c"), row("b"), row("b", 2), row("a")},
                             {row("a"), row("b"), row("b", 2)}}) {
        change(next);
        ASSERT_EQ(list.rowCount(), next.size());
        for (int at = 0; at < list.rowCount(); ++at)
            EXPECT_EQ(list.data(list.index(at), Qt::UserRole), next[at]);
    }
}

TEST_F(RowListTest, FollowsAnyChangeToTheEnd) {
    const QVariantList table[] = {{},
                                  {row("x"), row("y")},
                                  {row("y"), row("x", 5), row("z")},
                                  {row("z"), row("q"), row("y", 2)},
                                  {row("b"), row("q", 1)}};
    for (const auto& next : table) {
        change(next);
        ASSERT_EQ(list.rowCount(), next.size());
        for (int at = 0; at < list.rowCount(); ++at)
            EXPECT_EQ(list.data(list.index(at), Qt::UserRole), next[at]);
    }
}

} // namespace
} // namespace morvex
