#include "platform/ports/StandardFolders.h"

#include "platform/memory/FixedFolders.h"

#include <gtest/gtest.h>

namespace morvex {
namespace {

TEST(StandardFolders, ATildeStandsForTheHomeFolderOfItsUser) {
    FixedFolders folders;
    folders.homeFolder = "/home/adam";
    folders.homes["eva"] = "/home/eva";
    EXPECT_EQ(expandingTilde("~", folders), "/home/adam");
    EXPECT_EQ(expandingTilde("~/a", folders), "/home/adam/a");
    EXPECT_EQ(expandingTilde("~eva/a", folders), "/home/eva/a");
    EXPECT_EQ(expandingTilde("~nobody/a", folders), "~nobody/a");
    EXPECT_EQ(expandingTilde("a/~", folders), "a/~");
}

} // namespace
} // namespace morvex
