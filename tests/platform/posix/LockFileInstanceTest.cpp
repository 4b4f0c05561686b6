#include "platform/posix/qt/LockFileInstance.h"

#include "tests/support/HeardLog.h"
#include "tests/support/TemporaryFolder.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

#include <fstream>
#include <memory>
#include <string>
#include <sys/fsuid.h>
#include <unistd.h>
#include <vector>

namespace morvex {
namespace {

std::string claimOf(LockFileInstance& instance) {
    const auto claim = instance.claim();
    if (!claim) return claim.error().popis().czech();
    return *claim == LockFileInstance::Claim::made ? "made" : "held by another";
}

TEST(LockFileInstance, OnlyOneClaimsADataFolder) {
    TemporaryFolder folder;
    LockFileInstance first(folder.path());
    LockFileInstance second(folder.path());
    EXPECT_EQ(claimOf(first), "made");
    EXPECT_EQ(claimOf(first), "made");
    EXPECT_EQ(claimOf(second), "held by another");
}

TEST(LockFileInstance, AClaimEndsWithItsHolderAndNotWithTheFile) {
    TemporaryFolder folder;
    auto first = std::make_unique<LockFileInstance>(folder.path());
    ASSERT_EQ(claimOf(*first), "made");
    first.reset();
    EXPECT_TRUE(std::filesystem::exists(folder.path() / "Morvex" / "lock"));
    LockFileInstance second(folder.path());
    EXPECT_EQ(claimOf(second), "made");
}

TEST(LockFileInstance, DataFoldersAreIndependent) {
    TemporaryFolder one;
    TemporaryFolder other;
    LockFileInstance first(one.path());
    LockFileInstance second(other.path());
    EXPECT_EQ(claimOf(first), "made");
    EXPECT_EQ(claimOf(second), "made");
}

TEST(LockFileInstance, WhereTheLockCannotBeMadeItSaysWhy) {
    TemporaryFolder folder;
    const auto unusable = [&](const std::string& why) {
        return "Složku s daty „" + (folder.path() / "Morvex").string() + "“ nejde použít: " + why;
    };
    LockFileInstance instance(folder.path());
    std::ofstream(folder.path() / "Morvex") << "a file in place of the folder";
    EXPECT_EQ(claimOf(instance), unusable("Část cesty není složka."));
    std::filesystem::remove(folder.path() / "Morvex");
    std::filesystem::create_directories(folder.path() / "Morvex" / "lock");
    EXPECT_EQ(claimOf(instance), unusable("Na této cestě je složka."));
    std::filesystem::remove(folder.path() / "Morvex" / "lock");
    std::filesystem::create_symlink("elsewhere", folder.path() / "Morvex" / "lock");
    EXPECT_EQ(claimOf(instance), unusable("Cesta vede přes odkaz, který nejde sledovat."));
    std::filesystem::remove(folder.path() / "Morvex" / "lock");
    EXPECT_EQ(claimOf(instance), "made");
}

TEST(LockFileInstance, WhereTheLockCannotBeMadeTheSystemsOwnWordsGoToTheLog) {
    TemporaryFolder folder;
    std::filesystem::create_directories(folder.path() / "Morvex" / "lock");
    HeardLog log;
    EXPECT_FALSE(LockFileInstance(folder.path()).claim());
    EXPECT_EQ(log.lines(), std::vector<std::string>{"using the data folder: Is a directory"});
}

TEST(LockFileInstance, AFolderThatItMayNotWriteIntoIsNotTakenForAnotherProcess) {
    TemporaryFolder folder;
    std::filesystem::permissions(folder.path(), std::filesystem::perms(0555));
    LockFileInstance instance(folder.path());
    // Root may write anywhere, so this thread is nobody meanwhile.
    ::setfsuid(65534);
    const auto claim = claimOf(instance);
    ::setfsuid(::geteuid());
    EXPECT_EQ(claim, "Složku s daty „" + (folder.path() / "Morvex").string() +
                         "“ nejde použít: Chybí k tomu oprávnění.");
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
    ASSERT_EQ(claimOf(first), "made");
    EXPECT_FALSE(second.callOther()) << "nobody listens yet";
    first.onCall([&calls] { ++calls; });
    ASSERT_EQ(claimOf(second), "held by another");
    EXPECT_TRUE(second.callOther());
    QCoreApplication::processEvents();
    EXPECT_EQ(calls, 1);
}

TEST(LockFileInstance, ASocketThatACrashLeftBehindDoesNotHinder) {
    TemporaryFolder folder;
    auto first = std::make_unique<LockFileInstance>(folder.path());
    ASSERT_EQ(claimOf(*first), "made");
    first->onCall([] {});
    first.reset();
    EXPECT_FALSE(LockFileInstance(folder.path()).callOther());
    LockFileInstance second(folder.path());
    ASSERT_EQ(claimOf(second), "made");
    second.onCall([] {});
    EXPECT_TRUE(LockFileInstance(folder.path()).callOther());
}

} // namespace
} // namespace morvex
