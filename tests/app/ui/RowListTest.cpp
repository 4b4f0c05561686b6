#include "app/ui/models/RowList.h"

#include <QSignalSpy>
#include <gtest/gtest.h>

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
