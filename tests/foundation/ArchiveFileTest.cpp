#include "foundation/ArchiveFile.h"

#include "platform/posix/base/AtomicFile.h"
#include "shared/base/SystemError.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <fstream>
#include <string>
#include <sys/resource.h>

namespace morvex {
namespace {

/// While it lives this process can open nothing.
class WithoutDescriptors {
  public:
    WithoutDescriptors() {
        ::getrlimit(RLIMIT_NOFILE, &before_);
        const rlimit none{0, before_.rlim_max};
        ::setrlimit(RLIMIT_NOFILE, &none);
    }

    ~WithoutDescriptors() { ::setrlimit(RLIMIT_NOFILE, &before_); }

    WithoutDescriptors(const WithoutDescriptors&) = delete;
    WithoutDescriptors& operator=(const WithoutDescriptors&) = delete;

  private:
    rlimit before_{};
};

class ArchiveFileTest : public testing::Test {
  protected:
    static constexpr std::size_t limit = 100;

    static std::string textIn(const std::filesystem::path& file) {
        auto bytes = readWhole(file, 1000);
        return bytes && *bytes ? std::string(asText(**bytes)) : "nothing";
    }

    [[nodiscard]] std::filesystem::path damaged(const std::string& suffix = "") const {
        return path.string() + ".damaged" + suffix;
    }

    TemporaryFolder folder;
    std::filesystem::path path = folder.path() / "records.json";
    ArchiveFile archive{path, limit};
};

TEST_F(ArchiveFileTest, ReadsNothingWhereNothingIsAndMakesTheFoldersOfTheFirstSave) {
    path = folder.path() / "deep" / "er" / "records.json";
    ArchiveFile deeper(path, limit);
    auto bytes = deeper.read();
    ASSERT_TRUE(bytes);
    EXPECT_FALSE(*bytes);
    EXPECT_TRUE(deeper.save(asBytes("new")));
    EXPECT_EQ(textIn(path), "new");
}

TEST_F(ArchiveFileTest, ReadsWhatWasSavedAndOverwritesIt) {
    ASSERT_TRUE(archive.save(asBytes("old")));
    EXPECT_EQ(asText(archive.read().value().value()), "old");
    ASSERT_TRUE(archive.save(asBytes("new")));
    EXPECT_EQ(textIn(path), "new");
    EXPECT_FALSE(std::filesystem::exists(damaged()));
}

TEST_F(ArchiveFileTest, PutsADamagedFileAsideBeforeTheNextSaveAndOnlyThen) {
    ASSERT_TRUE(archive.save(asBytes("torn")));
    ASSERT_TRUE(archive.read());
    archive.markDamaged();
    EXPECT_EQ(textIn(path), "torn");
    ASSERT_TRUE(archive.save(asBytes("first")));
    EXPECT_EQ(textIn(damaged()), "torn");
    EXPECT_EQ(textIn(path), "first");
    ASSERT_TRUE(archive.save(asBytes("second")));
    EXPECT_EQ(textIn(path), "second");
    EXPECT_FALSE(std::filesystem::exists(damaged("-2")));
}

TEST_F(ArchiveFileTest, PutsAFileThatIsTooLongAside) {
    const std::string tooLong(limit + 1, 'x');
    std::ofstream(path) << tooLong;
    auto bytes = archive.read();
    ASSERT_FALSE(bytes);
    EXPECT_EQ(*bytes.error().as<SystemError>(), SystemError{EFBIG});
    ASSERT_TRUE(archive.save(asBytes("new")));
    EXPECT_EQ(textIn(damaged()), tooLong);
    EXPECT_EQ(textIn(path), "new");
}

TEST_F(ArchiveFileTest, WritesNothingWhileADamagedFileCannotBePutAside) {
    std::filesystem::create_directory(path);
    ASSERT_FALSE(archive.read());
    EXPECT_FALSE(archive.save(asBytes("new")));
    EXPECT_TRUE(std::filesystem::is_directory(path));
    std::filesystem::remove(path);
    std::ofstream(path) << "in its place";
    EXPECT_TRUE(archive.save(asBytes("new")));
    EXPECT_EQ(textIn(damaged()), "in its place");
}

TEST_F(ArchiveFileTest, WhatCannotBeReadNowIsNeitherPutAsideNorOverwritten) {
    ASSERT_TRUE(archive.save(asBytes("whole")));
    {
        WithoutDescriptors none;
        auto bytes = archive.read();
        ASSERT_FALSE(bytes);
        EXPECT_EQ(systemCode(bytes.error()), EMFILE);
    }
    auto saved = archive.save(asBytes("new"));
    ASSERT_FALSE(saved);
    EXPECT_EQ(systemCode(saved.error()), EMFILE);
    EXPECT_EQ(textIn(path), "whole");
    EXPECT_FALSE(std::filesystem::exists(damaged()));

    EXPECT_EQ(asText(archive.read().value().value()), "whole");
    EXPECT_TRUE(archive.save(asBytes("new")));
    EXPECT_EQ(textIn(path), "new");
}

TEST_F(ArchiveFileTest, SavesWhenTheDamagedFileIsGone) {
    ASSERT_TRUE(archive.save(asBytes("torn")));
    archive.markDamaged();
    std::filesystem::remove(path);
    EXPECT_TRUE(archive.save(asBytes("new")));
    EXPECT_EQ(textIn(path), "new");
}

TEST_F(ArchiveFileTest, RefusesToWriteWhatItCouldNotReadAgain) {
    ASSERT_TRUE(archive.save(asBytes(std::string(limit, 'a'))));
    auto saved = archive.save(asBytes(std::string(limit + 1, 'b')));
    ASSERT_FALSE(saved);
    EXPECT_EQ(*saved.error().as<SystemError>(), SystemError{EFBIG});
    EXPECT_EQ(textIn(path), std::string(limit, 'a'));
}

TEST_F(ArchiveFileTest, AFailedSaveKeepsTheOldFile) {
    ASSERT_TRUE(archive.save(asBytes("old")));
    std::ofstream(folder.path() / "file") << "no folder";
    ArchiveFile below(folder.path() / "file" / "records.json", limit);
    EXPECT_FALSE(below.save(asBytes("new")));
    EXPECT_EQ(textIn(path), "old");
}

} // namespace
} // namespace morvex
