#include "platform/posix/base/AtomicFile.h"
#include "tests/fault/TracedChild.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <fstream>
#include <iterator>

namespace morvex {
namespace {

std::string contentOf(const std::filesystem::path& path) {
    std::ifstream file(path);
    return {std::istreambuf_iterator(file), {}};
}

/// Sets a file "damaged" aside while the call number `call` fails.
TracedEnd setAsideWith(const std::filesystem::path& path, int code, std::size_t call = 0) {
    std::ofstream(path) << "damaged";
    auto work = [path] { return [path] { return setAside(path).has_value(); }; };
    return runTraced(work, {SystemFault::Kind::fails, call, code});
}

TEST(SetAsideFault, AFileSystemWithoutHardLinksGetsARename) {
    for (const int code : {EPERM, EOPNOTSUPP, ENOSYS}) {
        TemporaryFolder folder;
        const auto path = folder.path() / "notes.json";
        const auto end = setAsideWith(path, code);
        EXPECT_TRUE(end.struck);
        EXPECT_EQ(end.answer, true);
        EXPECT_FALSE(std::filesystem::exists(path));
        EXPECT_EQ(contentOf(folder.path() / "notes.json.damaged"), "damaged");
    }
}

TEST(SetAsideFault, TheRenameTakesNoNameThatIsTaken) {
    TemporaryFolder folder;
    const auto path = folder.path() / "notes.json";
    std::ofstream(folder.path() / "notes.json.damaged") << "earlier";
    EXPECT_EQ(setAsideWith(path, EPERM).answer, true);
    EXPECT_EQ(contentOf(folder.path() / "notes.json.damaged"), "earlier");
    EXPECT_EQ(contentOf(folder.path() / "notes.json.damaged-2"), "damaged");
}

TEST(SetAsideFault, AFileThatKeepsItsNameGetsNoSecondOne) {
    TemporaryFolder folder;
    const auto path = folder.path() / "notes.json";
    constexpr std::size_t removal = 1;
    EXPECT_EQ(setAsideWith(path, EPERM, removal).answer, false);
    EXPECT_EQ(contentOf(path), "damaged");
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "notes.json.damaged"));
}

TEST(SetAsideFault, AnyOtherFailureLeavesTheFileWhereItIs) {
    TemporaryFolder folder;
    const auto path = folder.path() / "notes.json";
    EXPECT_EQ(setAsideWith(path, EACCES).answer, false);
    EXPECT_EQ(contentOf(path), "damaged");
}

} // namespace
} // namespace morvex
