#include "platform/linux/LockFileInstance.h"

#include "tests/support/TemporaryFolder.h"

#include <QCoreApplication>
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

TEST(LockFileInstance, TheOneIsCalledByALaterStart) {
    int argc = 1;
    char name[] = "test";
    char* argv[] = {name, nullptr};
    std::unique_ptr<QCoreApplication> application;
    if (!QCoreApplication::instance()) application = std::make_unique<QCoreApplication>(argc, argv);
    TemporaryFolder folder;
    // Longer than an address of a socket may be.
    auto home = folder.path() / std::string(200, 'x');
    int calls = 0;
    LockFileInstance first(home);
    LockFileInstance second(home);
    ASSERT_TRUE(first.claim());
    EXPECT_FALSE(second.callOther()) << "nobody listens yet";
    first.onCall([&calls] { ++calls; });
    ASSERT_FALSE(second.claim());
    EXPECT_TRUE(second.callOther());
    QCoreApplication::processEvents();
    EXPECT_EQ(calls, 1);
}

TEST(LockFileInstance, ASocketThatACrashLeftBehindDoesNotHinder) {
    TemporaryFolder folder;
    auto first = std::make_unique<LockFileInstance>(folder.path());
    ASSERT_TRUE(first->claim());
    first->onCall([] {});
    first.reset();
    EXPECT_FALSE(LockFileInstance(folder.path()).callOther());
    LockFileInstance second(folder.path());
    ASSERT_TRUE(second.claim());
    second.onCall([] {});
    EXPECT_TRUE(LockFileInstance(folder.path()).callOther());
}

} // namespace
} // namespace morvex
