#include "platform/linux/LockFileInstance.h"

#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <fstream>
#include <memory>

namespace morvex {
namespace {

TEST(LockFileInstance, OnlyOneClaimsADataFolder) {
    TemporaryFolder folder;
    LockFileInstance first(folder.path());
    LockFileInstance second(folder.path());
    EXPECT_TRUE(first.claim());
    EXPECT_TRUE(first.claim());
    EXPECT_FALSE(second.claim());
}

TEST(LockFileInstance, AClaimEndsWithItsHolderAndNotWithTheFile) {
    TemporaryFolder folder;
    auto first = std::make_unique<LockFileInstance>(folder.path());
    ASSERT_TRUE(first->claim());
    first.reset();
    EXPECT_TRUE(std::filesystem::exists(folder.path() / "Morvex" / "lock"));
    EXPECT_TRUE(LockFileInstance(folder.path()).claim());
}

TEST(LockFileInstance, DataFoldersAreIndependent) {
    TemporaryFolder one;
    TemporaryFolder other;
    LockFileInstance first(one.path());
    LockFileInstance second(other.path());
    EXPECT_TRUE(first.claim());
    EXPECT_TRUE(second.claim());
}

TEST(LockFileInstance, NobodyClaimsWhereTheLockCannotBeMade) {
    TemporaryFolder folder;
    std::ofstream(folder.path() / "Morvex") << "a file in place of the folder";
    EXPECT_FALSE(LockFileInstance(folder.path()).claim());
}

} // namespace
} // namespace morvex
