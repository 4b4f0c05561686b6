#include "platform/posix/base/AtomicFile.h"

#include "platform/posix/base/FileDescriptor.h"
#include "shared/base/SystemError.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <fcntl.h>
#include <fstream>
#include <sys/file.h>
#include <sys/stat.h>

namespace morvex {
namespace {

std::string contentOf(const std::filesystem::path& path) {
    auto bytes = readWhole(path, 1000);
    return bytes && *bytes ? std::string(asText(**bytes)) : "nothing";
}

int modeOf(const std::filesystem::path& path) {
    struct stat status{};
    ::stat(path.c_str(), &status);
    return status.st_mode & 07777;
}

int codeOf(const Error& error) {
    auto* cause = error.as<SystemError>();
    return cause ? cause->code : 0;
}

TEST(AtomicFile, ReplacesTheFileAndLeavesNothingBeside) {
    TemporaryFolder folder;
    auto path = folder.path() / "deep" / "er" / "file.json";
    ASSERT_TRUE(writeAtomically(path, asBytes("old")));
    ASSERT_TRUE(writeAtomically(path, asBytes("new")));
    EXPECT_EQ(contentOf(path), "new");
    EXPECT_EQ(modeOf(path), 0600);
    EXPECT_EQ(modeOf(path.parent_path()), 0700);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(path.parent_path()), {}), 1);
}

TEST(AtomicFile, AFailedWriteKeepsTheOldFile) {
    TemporaryFolder folder;
    auto path = folder.path() / "file";
    std::filesystem::create_directory(path);
    EXPECT_FALSE(writeAtomically(path, asBytes("new")));
    EXPECT_TRUE(std::filesystem::is_directory(path));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1);
}

TEST(AtomicFile, ASaveRemovesWhatACrashedOneHasLeftButNotWhatIsStillBeingWritten) {
    TemporaryFolder folder;
    auto path = folder.path() / "file";
    std::ofstream(folder.path() / ".file.new-crashd") << "half";
    std::ofstream(folder.path() / ".file.new-living") << "half";
    std::ofstream(folder.path() / ".other.new-crashd") << "half";
    FileDescriptor held(::open((folder.path() / ".file.new-living").c_str(), O_RDONLY | O_CLOEXEC));
    ASSERT_EQ(::flock(held.get(), LOCK_EX), 0);
    ASSERT_TRUE(writeAtomically(path, asBytes("new")));
    EXPECT_FALSE(std::filesystem::exists(folder.path() / ".file.new-crashd"));
    EXPECT_TRUE(std::filesystem::exists(folder.path() / ".file.new-living"));
    EXPECT_TRUE(std::filesystem::exists(folder.path() / ".other.new-crashd"));
}

TEST(AtomicFile, ReadsNothingWhereNothingIs) {
    TemporaryFolder folder;
    auto missing = readWhole(folder.path() / "missing", 10);
    ASSERT_TRUE(missing);
    EXPECT_FALSE(*missing);
}

TEST(AtomicFile, RefusesToReadMoreThanTheLimitOrAnythingButAFile) {
    TemporaryFolder folder;
    auto path = folder.path() / "file";
    std::ofstream(path) << "0123456789";
    EXPECT_TRUE(readWhole(path, 10));
    EXPECT_EQ(codeOf(readWhole(path, 9).error()), EFBIG);
    ASSERT_EQ(::mkfifo((folder.path() / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(codeOf(readWhole(folder.path() / "pipe", 10).error()), EINVAL);
}

TEST(AtomicFile, ADamagedFileIsSetAsideUnderANameThatIsFree) {
    TemporaryFolder folder;
    auto path = folder.path() / "notes.json";
    for (const char* expected : {"notes.json.damaged", "notes.json.damaged-2"}) {
        std::ofstream(path) << expected;
        EXPECT_EQ(setAside(path).value().filename(), expected);
        EXPECT_FALSE(std::filesystem::exists(path));
        EXPECT_EQ(contentOf(folder.path() / expected), expected);
    }
}

} // namespace
} // namespace morvex
