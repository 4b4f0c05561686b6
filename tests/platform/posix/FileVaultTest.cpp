#include "platform/posix/FileVault.h"

#include "platform/posix/VaultRules.h"
#include "platform/posix/base/AtomicFile.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <fstream>
#include <sys/stat.h>

namespace morvex {
namespace {

namespace fs = std::filesystem;

const std::string service = "zz.example.service";
const Bytes binary = {0, 1, 255, 10, 0};

int modeOf(const fs::path& path) {
    struct stat status{};
    ::lstat(path.c_str(), &status);
    return status.st_mode & 07777;
}

class FileVaultTest : public testing::Test {
  protected:
    [[nodiscard]] fs::path item(const std::string& name) const { return root_ / service / name; }

    void writeItem(const std::string& name, const std::string& text) {
        fs::create_directories(root_ / service);
        std::ofstream(item(name)) << text;
    }

    TemporaryFolder folder_;
    fs::path root_ = folder_.path() / "Morvex" / "vault";
    FileVault vault_{folder_.path()};
};

TEST_F(FileVaultTest, KeepsTheRawBytesUnderServiceAndAccount) {
    EXPECT_EQ(vault_.add(service, "account", binary), vaultStatus::ok);
    EXPECT_EQ(readWhole(item("account"), 100).value(), binary);
    auto found = FileVault(folder_.path()).find(service, "account");
    EXPECT_EQ(found.status, vaultStatus::ok);
    EXPECT_EQ(found.bytes, binary);
}

TEST_F(FileVaultTest, AnEmptySecretIsAnItem) {
    EXPECT_EQ(vault_.add(service, "account", {}), vaultStatus::ok);
    EXPECT_EQ(vault_.find(service, "account").status, vaultStatus::ok);
}

TEST_F(FileVaultTest, UpdatesAddsAndRemovesOnlyWhatFits) {
    EXPECT_EQ(vault_.find(service, "account").status, vaultStatus::itemNotFound);
    EXPECT_EQ(vault_.update(service, "account", binary), vaultStatus::itemNotFound);
    EXPECT_EQ(vault_.remove(service, "account"), vaultStatus::itemNotFound);
    EXPECT_EQ(vault_.add(service, "account", asBytes("one")), vaultStatus::ok);
    EXPECT_EQ(vault_.add(service, "account", binary), vaultStatus::duplicateItem);
    EXPECT_EQ(vault_.update(service, "account", asBytes("two")), vaultStatus::ok);
    EXPECT_EQ(vault_.find(service, "account").bytes, toBytes("two"));
    EXPECT_EQ(vault_.remove(service, "account"), vaultStatus::ok);
    EXPECT_EQ(vault_.find(service, "account").status, vaultStatus::itemNotFound);
}

TEST_F(FileVaultTest, EveryFolderAndFileIsPrivate) {
    ASSERT_EQ(vault_.add(service, "account", binary), vaultStatus::ok);
    EXPECT_EQ(modeOf(root_), 0700);
    EXPECT_EQ(modeOf(root_ / service), 0700);
    EXPECT_EQ(modeOf(item("account")), 0600);
}

TEST_F(FileVaultTest, TightensModesThatBecameWider) {
    ASSERT_EQ(vault_.add(service, "account", binary), vaultStatus::ok);
    ::chmod(root_.c_str(), 0755);
    ::chmod((root_ / service).c_str(), 0777);
    ::chmod(item("account").c_str(), 0644);
    EXPECT_EQ(vault_.find(service, "account").status, vaultStatus::ok);
    EXPECT_EQ(modeOf(root_), 0700);
    EXPECT_EQ(modeOf(root_ / service), 0700);
    EXPECT_EQ(modeOf(item("account")), 0600);
}

TEST_F(FileVaultTest, NamesBecomeSafeFileNames) {
    const std::pair<const char*, const char*> names[] = {
        {"Az09._-", "Az09._-"},
        {".", "%2E"},
        {"..", "%2E%2E"},
        {"...", "..."},
        {"a/b", "a%2Fb"},
        {"../../etc/passwd", "..%2F..%2Fetc%2Fpasswd"},
        {"smtp.password.%2F", "smtp.password.%252F"},
        {"č", "%C4%8D"},
    };
    for (const auto& [account, file] : names) {
        EXPECT_EQ(vault_.add(service, account, asBytes(account)), vaultStatus::ok) << account;
        EXPECT_TRUE(fs::is_regular_file(item(file))) << file;
        EXPECT_EQ(vault_.find(service, account).bytes, toBytes(account));
    }
    EXPECT_EQ(vault_.add("..", "account", binary), vaultStatus::ok);
    EXPECT_TRUE(fs::is_regular_file(root_ / "%2E%2E" / "account"));
}

TEST_F(FileVaultTest, ARemovalTakesWithItWhatASaveThatCrashedHasLeft) {
    EXPECT_EQ(vault_.add(service, "account", binary), vaultStatus::ok);
    for (auto expected : {vaultStatus::ok, vaultStatus::itemNotFound}) {
        writeItem(".account.new-abcdef", "half a secret");
        EXPECT_EQ(vault_.remove(service, "account"), expected);
        EXPECT_FALSE(fs::exists(item(".account.new-abcdef")));
    }
}

TEST_F(FileVaultTest, NamesThatNoFileCanHaveAreRefused) {
    const std::pair<std::string, std::int32_t> rows[] = {
        {"", vaultStatus::io}, {std::string(256, 'a'), vaultStatus::posixBase + ENAMETOOLONG}};
    for (const auto& [account, status] : rows) {
        EXPECT_EQ(vault_.add(service, account, binary), status);
        EXPECT_EQ(vault_.find(service, account).status, status);
    }
    EXPECT_EQ(vault_.add("", "account", binary), vaultStatus::io);
}

TEST_F(FileVaultTest, ALinkInPlaceOfAnItemIsRefusedAndLeftAlone) {
    writeItem("target", "secret of another");
    fs::create_symlink(item("target"), item("account"));
    EXPECT_EQ(vault_.find(service, "account").status, vaultStatus::posixBase + ELOOP);
    EXPECT_EQ(vault_.update(service, "account", binary), vaultStatus::posixBase + ELOOP);
    EXPECT_EQ(vault_.add(service, "account", binary), vaultStatus::posixBase + ELOOP);
    EXPECT_EQ(vault_.remove(service, "account"), vaultStatus::posixBase + ELOOP);
    EXPECT_TRUE(fs::is_symlink(item("account")));
    EXPECT_EQ(vault_.find(service, "target").bytes, toBytes("secret of another"));
}

TEST_F(FileVaultTest, ADanglingLinkIsNotAnAbsentItem) {
    fs::create_directories(root_ / service);
    fs::create_symlink(folder_.path() / "elsewhere", item("account"));
    EXPECT_EQ(vault_.add(service, "account", binary), vaultStatus::posixBase + ELOOP);
    EXPECT_FALSE(fs::exists(folder_.path() / "elsewhere"));
}

TEST_F(FileVaultTest, ALinkInPlaceOfAServiceIsRefused) {
    fs::create_directories(root_);
    fs::create_directory(folder_.path() / "elsewhere");
    fs::create_symlink(folder_.path() / "elsewhere", root_ / service);
    EXPECT_EQ(vault_.add(service, "account", binary), vaultStatus::posixBase + ELOOP);
    EXPECT_TRUE(fs::is_empty(folder_.path() / "elsewhere"));
}

TEST_F(FileVaultTest, AFolderOrAPipeInPlaceOfAnItemIsRefused) {
    fs::create_directories(item("folder"));
    ASSERT_EQ(::mkfifo(item("pipe").c_str(), 0600), 0);
    for (const char* account : {"folder", "pipe"}) {
        EXPECT_EQ(vault_.find(service, account).status, vaultStatus::io);
        EXPECT_EQ(vault_.remove(service, account), vaultStatus::io);
    }
}

TEST_F(FileVaultTest, ARefusalOfTheSystemHasItsWords) {
    EXPECT_EQ(vault_.text(vaultStatus::posixBase + ENOSPC), "Na disku není místo.");
    EXPECT_EQ(vault_.text(vaultStatus::posixBase), std::nullopt);
}

TEST_F(FileVaultTest, AnItemHasALargestSize) {
    Bytes largest(vaultRules::itemLimit, 7);
    EXPECT_EQ(vault_.add(service, "account", largest), vaultStatus::ok);
    EXPECT_EQ(vault_.find(service, "account").bytes, largest);
    largest.push_back(7);
    EXPECT_EQ(vault_.update(service, "account", largest), vaultStatus::io);
    writeItem("large", std::string(largest.size(), 'x'));
    EXPECT_EQ(vault_.find(service, "large").status, vaultStatus::posixBase + EFBIG);
}

TEST_F(FileVaultTest, KnowsWhetherAnythingIsStored) {
    EXPECT_FALSE(vault_.hasItems());
    fs::create_directories(root_ / service);
    EXPECT_FALSE(vault_.hasItems());
    writeItem("account", "x");
    EXPECT_TRUE(vault_.hasItems());
}

TEST_F(FileVaultTest, WhatCannotBeReadMayHoldItems) {
    fs::create_directories(root_.parent_path());
    std::ofstream(root_) << "no folder";
    EXPECT_TRUE(vault_.hasItems());
}

TEST_F(FileVaultTest, HasWordsForTheStatusesItKnows) {
    EXPECT_EQ(vault_.text(vaultStatus::itemNotFound), "položka neexistuje");
    EXPECT_EQ(vault_.text(vaultStatus::interactionNotAllowed), "trezor je zamčený");
    EXPECT_FALSE(vault_.text(vaultStatus::ok));
    EXPECT_FALSE(vault_.text(-1));
}

} // namespace
} // namespace morvex
