#include "foundation/Text.h"
#include "tests/fault/PathLayouts.h"
#include "tests/support/Effort.h"

#include <gtest/gtest.h>

#include <set>

namespace morvex {
namespace {

class PathLayoutTest : public testing::Test {
  protected:
    /// Runs the check on a fresh tree of every layout, and says how many there were.
    void forEachLayout(const std::string& tool, void (*check)(const PathLayout&, LaidTree&)) {
        std::size_t count = 0;
        for (const auto& layout : pathLayouts()) {
            SCOPED_TRACE(layout.what);
            LaidTree tree(layout.tree, layout.allowed, layout.folder);
            check(layout, tree);
            ++count;
        }
        tell("Path check, " + tool, count, HasFailure() ? "some not as wanted" : "all as wanted");
    }
};

TEST_F(PathLayoutTest, ReadingGivesWhatLiesInsideAndNothingElse) {
    forEachLayout("reading", [](const PathLayout& layout, LaidTree& tree) {
        auto before = tree.snapshot();
        auto read = tree.read(tree.rooted(layout.asked));
        EXPECT_EQ(read.answer, layout.read);
        if (read.answer == Answer::done) EXPECT_TRUE(read.content.starts_with("inside")) << read.content;
        EXPECT_EQ(tree.snapshot(), before);
    });
}

TEST_F(PathLayoutTest, WritingMakesOneFileInsideAndChangesNothingElse) {
    forEachLayout("writing", [](const PathLayout& layout, LaidTree& tree) {
        auto before = tree.snapshot();
        EXPECT_EQ(tree.write(tree.rooted(layout.asked), "written"), layout.write);
        auto after = tree.snapshot();
        if (layout.write == Answer::done) {
            auto made = after.extract("home/Projects/" + layout.made);
            ASSERT_TRUE(made);
            EXPECT_EQ(made.mapped(), "written");
        }
        // Folders that were made on the way may stay.
        const auto way = "home/Projects/" + layout.made;
        for (const auto& [name, held] : after)
            EXPECT_TRUE(before.contains(name) ? before[name] == held : way.starts_with(name)) << name;
        for (const auto& [name, held] : before) EXPECT_TRUE(after.contains(name)) << name;
    });
}

TEST_F(PathLayoutTest, SearchingFindsTheFilesInsideByTheirOwnNames) {
    forEachLayout("searching", [](const PathLayout& layout, LaidTree& tree) {
        auto before = tree.snapshot();
        auto found = tree.search("");
        ASSERT_EQ(found.has_value(), layout.found.has_value());
        if (found) EXPECT_EQ(join(*found, ", "), *layout.found);
        EXPECT_EQ(tree.snapshot(), before);
    });
}

TEST_F(PathLayoutTest, TheLayoutsAreAtLeastSixtyAndDiffer) {
    std::set<std::string> names;
    for (const auto& layout : pathLayouts()) EXPECT_TRUE(names.insert(layout.what).second) << layout.what;
    EXPECT_GE(names.size(), 60U);
}

} // namespace
} // namespace morvex
