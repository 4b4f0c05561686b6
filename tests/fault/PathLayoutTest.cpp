#include "foundation/Text.h"
#include "tests/fault/PathLayouts.h"
#include "tests/support/Effort.h"

#include <gtest/gtest.h>

#include <optional>
#include <set>
#include <tuple>

namespace morvex {
namespace {

class PathLayoutTest : public testing::Test {
  protected:
    /// Everything that distinguishes two layouts for a tool.
    using Differences =
        std::tuple<std::string, std::vector<std::string>, std::optional<std::string>, std::string>;

    static Differences ofAPath(const PathLayout& layout) {
        return {layout.tree, layout.allowed, layout.folder, layout.asked};
    }

    static Differences ofASearch(const PathLayout& layout) {
        return {layout.tree, layout.allowed, layout.folder, ""};
    }

    /// The paths whose names contain the query, which must be in plain letters.
    static std::vector<std::string> matching(std::vector<std::string> found, const std::string& query) {
        std::erase_if(found, [&query](const std::string& path) {
            return !lowerCase(path.substr(path.rfind('/') + 1)).contains(lowerCase(query));
        });
        return found;
    }

    /// Runs the check on a fresh tree for every layout that differs from the earlier ones, and prints their
    /// number.
    void forEachLayout(const std::string& tool, Differences (*differences)(const PathLayout&),
                       void (*check)(const PathLayout&, LaidTree&)) {
        std::set<Differences> tried;
        for (const auto& layout : pathLayouts()) {
            if (!tried.insert(differences(layout)).second) continue;
            SCOPED_TRACE(layout.what);
            LaidTree tree(layout.tree, layout.allowed, layout.folder);
            check(layout, tree);
        }
        EXPECT_GE(tried.size(), 60U);
        tell("Path check, " + tool, tried.size(), "all as wanted");
    }
};

TEST_F(PathLayoutTest, ReadingGivesWhatLiesInsideAndNothingElse) {
    forEachLayout("reading", ofAPath, [](const PathLayout& layout, LaidTree& tree) {
        auto before = tree.snapshot();
        auto read = tree.read(tree.rooted(layout.asked));
        EXPECT_EQ(read.answer, layout.read);
        if (read.answer == Answer::done) EXPECT_TRUE(read.content.starts_with("inside")) << read.content;
        EXPECT_EQ(tree.snapshot(), before);
    });
}

TEST_F(PathLayoutTest, WritingMakesOneFileInsideAndChangesNothingElse) {
    forEachLayout("writing", ofAPath, [](const PathLayout& layout, LaidTree& tree) {
        auto before = tree.snapshot();
        EXPECT_EQ(tree.write(tree.rooted(layout.asked), "written"), layout.write);
        auto after = tree.snapshot();
        if (layout.write == Answer::done) {
            auto made = after.extract("home/Projects/" + layout.made);
            ASSERT_TRUE(made);
            EXPECT_EQ(made.mapped(), "written");
        }
        // Folders created on the way may remain.
        const auto way = "home/Projects/" + layout.made;
        for (const auto& [name, held] : after)
            EXPECT_TRUE(before.contains(name) ? before[name] == held : way.starts_with(name)) << name;
        for (const auto& [name, held] : before) EXPECT_TRUE(after.contains(name)) << name;
    });
}

TEST_F(PathLayoutTest, SearchingFindsTheFilesInsideByTheirOwnNames) {
    forEachLayout("searching", ofASearch, [](const PathLayout& layout, LaidTree& tree) {
        auto before = tree.snapshot();
        auto found = tree.search("");
        ASSERT_EQ(found.has_value(), layout.found.has_value());
        if (found) {
            EXPECT_EQ(join(*found, ", "), *layout.found);
            for (const std::string query : {"e", "FILE", "secret"})
                EXPECT_EQ(tree.search(query), matching(*found, query)) << query;
        }
        EXPECT_EQ(tree.snapshot(), before);
    });
}

TEST_F(PathLayoutTest, TheLayoutsAreAtLeastSixtyAndDiffer) {
    std::set<Differences> layouts;
    for (const auto& layout : pathLayouts())
        EXPECT_TRUE(layouts.insert(ofAPath(layout)).second) << layout.what;
    EXPECT_GE(layouts.size(), 60U);
}

} // namespace
} // namespace morvex
