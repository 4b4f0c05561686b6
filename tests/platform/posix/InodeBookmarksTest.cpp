#include "platform/posix/InodeBookmarks.h"

#include "tests/support/FolderTree.h"
#include "tests/support/PlainUser.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sys/stat.h>

namespace morvex {
namespace {

namespace fs = std::filesystem;

std::uint64_t inodeOf(const std::string& path) {
    struct stat status{};
    return ::stat(path.c_str(), &status) == 0 ? status.st_ino : 0;
}

TEST(InodeBookmarks, ABookmarkLeadsBackToItsFolder) {
    TemporaryFolder folder;
    InodeBookmarks bookmarks;
    auto path = (folder.path() / "Účty \"1\"").string();
    fs::create_directory(path);
    auto bookmark = bookmarks.create(path);
    ASSERT_TRUE(bookmark);
    auto resolved = bookmarks.resolve(*bookmark);
    ASSERT_TRUE(resolved);
    EXPECT_EQ(resolved->path, path);
    EXPECT_FALSE(resolved->stale);
}

TEST(InodeBookmarks, AnotherFolderAtThePathIsNotTheOneThatWasAllowed) {
    TemporaryFolder folder;
    InodeBookmarks bookmarks;
    auto path = (folder.path() / "a").string();
    fs::create_directory(path);
    auto bookmark = bookmarks.create(path);
    ASSERT_TRUE(bookmark);
    fs::rename(path, folder.path() / "b");
    EXPECT_FALSE(bookmarks.resolve(*bookmark));
    fs::create_directory(path);
    EXPECT_FALSE(bookmarks.resolve(*bookmark));
    fs::remove(path);
    fs::create_directory_symlink(folder.path() / "b", path);
    EXPECT_TRUE(bookmarks.resolve(*bookmark));
}

TEST(InodeBookmarks, AFolderThatMayNotBeLookedAtNowMayBeTheOneThatWasAllowed) {
    FolderTree tree;
    InodeBookmarks bookmarks;
    const auto path = tree.folder("closed/inner");
    const auto bookmark = bookmarks.create(path);
    ASSERT_TRUE(bookmark);
    tree.close("closed");
    {
        const PlainUser user;
        ASSERT_FALSE(bookmarks.create(path)) << "it cannot be looked at";
        const auto resolved = bookmarks.resolve(*bookmark);
        ASSERT_TRUE(resolved);
        EXPECT_EQ(resolved->path, path);
    }
    fs::permissions(tree.path("closed"), fs::perms::owner_all);
}

TEST(InodeBookmarks, OnlyAFolderHasABookmark) {
    TemporaryFolder folder;
    InodeBookmarks bookmarks;
    auto file = (folder.path() / "file").string();
    std::ofstream(file) << "x";
    auto text = [&](const std::string& path) { return bookmarks.create(path).error().popis().czech(); };
    EXPECT_EQ(text(file), "Část cesty není složka.");
    EXPECT_EQ(text(file + "-none"), "Soubor nebo složka neexistuje.");
    EXPECT_EQ(text("relative"), "Takovou cestu nejde použít.");
    EXPECT_EQ(text(folder.path().string() + std::string("\0x", 2)), "Takovou cestu nejde použít.");
    EXPECT_EQ(text(folder.path().string() + "/\xff"), "Takovou cestu nejde použít.");
}

TEST(InodeBookmarks, DamagedBytesLeadNowhere) {
    TemporaryFolder folder;
    InodeBookmarks bookmarks;
    auto path = folder.path().string();
    auto inode = std::to_string(inodeOf(path));
    auto json = [&](const std::string& number) {
        return R"({"inode":)" + number + R"(,"path":")" + path + "\"}";
    };
    ASSERT_TRUE(bookmarks.resolve(asBytes(json(inode))));
    for (const auto& text :
         {std::string(), std::string("{"), std::string("[]"), std::string("\xff"), json("1"), json("-1"),
          json("1.5"), json("\"" + inode + "\""), json("null"), R"({"path":")" + path + "\"}",
          R"({"inode":)" + inode + "}", R"({"inode":)" + inode + R"(,"path":1})",
          R"({"inode":)" + inode + R"(,"path":"tmp"})",
          R"({"inode":)" + inode + R"(,"path":")" + path + "\\u0000\"}", std::string(100'000, '['),
          json(inode) + std::string(100'000, ' ')})
        EXPECT_FALSE(bookmarks.resolve(asBytes(text))) << text.substr(0, 80);
}

TEST(InodeBookmarks, ThereIsNoAccessToHold) {
    InodeBookmarks bookmarks;
    EXPECT_FALSE(bookmarks.startAccess("/"));
}

} // namespace
} // namespace morvex
