#include "app/execution/SouboryBridge.h"

#include "foundation/ThreadExecutor.h"
#include "platform/memory/ManualExecutor.h"
#include "platform/posix/base/FileDescriptor.h"
#include "tests/app/execution/FileTree.h"
#include "tests/support/Await.h"
#include "tests/support/HeardLog.h"
#include "tests/support/PlainUser.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace morvex {
namespace {

using Chyba = SouboryBridge::Chyba;

class SouboryBridgeTest : public testing::Test {
  protected:
    std::string read(const std::string& path, const std::optional<std::string>& slozka = {}) {
        return said(executor.run(files.precti(path, slozka, tree.allowed())).value());
    }

    std::string write(const std::string& path, const std::string& text,
                      const std::optional<std::string>& slozka = {}) {
        return said(executor.run(files.zapis(path, text, slozka, tree.allowed())).value());
    }

    static std::string said(const Result<std::string>& result) {
        return result ? *result : result.error().popis().czech();
    }

    static std::string notAFile(const std::string& name) {
        return Chyba{Chyba::NeniSoubor{name}}.popis().czech();
    }

    static std::string exists(const std::string& name) {
        return Chyba{Chyba::UzExistuje{name}}.popis().czech();
    }

    FileTree tree;
    ManualExecutor executor;
    SouboryBridge files{executor};
};

TEST_F(SouboryBridgeTest, ReadsTheTextOfAFile) {
    tree.file("home/Projects/a/b.txt", "Žluťoučký kůň\n");
    EXPECT_EQ(read("a/b.txt"), "Žluťoučký kůň\n");
    EXPECT_EQ(read("~/Projects/a/b.txt"), "Žluťoučký kůň\n");
    EXPECT_EQ(read("projects/a/b.txt", "nothing"), "Žluťoučký kůň\n");
}

TEST_F(SouboryBridgeTest, WorksOnTheWorker) {
    tree.file("home/Projects/a", "text");
    ThreadExecutor home("home");
    ThreadExecutor worker("worker");
    SouboryBridge bridge(worker);
    EXPECT_EQ(await(home, bridge.precti("a", {}, tree.allowed())).value(), "text");
}

TEST_F(SouboryBridgeTest, AnEmptyFileIsEmptyText) {
    tree.file("home/Projects/a", "");
    EXPECT_EQ(read("a"), "");
}

TEST_F(SouboryBridgeTest, InvalidUtf8IsRepaired) {
    tree.file("home/Projects/a", "x\xffy");
    EXPECT_EQ(read("a"), "x\ufffdy");
}

TEST_F(SouboryBridgeTest, AFileOf256KilobytesIsReadAndOneByteMoreIsNot) {
    tree.file("home/Projects/most", std::string(262144, 'x'));
    tree.file("home/Projects/more", std::string(262145, 'x'));
    EXPECT_EQ(read("most"), std::string(262144, 'x'));
    EXPECT_EQ(read("more"), "Soubor more má přes 256 kB. Na čtení hlasem je to moc; řekni, co v něm hledat.");
}

TEST_F(SouboryBridgeTest, AFileWhoseSizeIsNotKnownIsRead) {
    AllowedFolders proc({"/proc"}, tree.standard);
    auto self = "/proc/" + std::to_string(::getpid());
    EXPECT_EQ(std::filesystem::file_size(self + "/status"), 0U);
    EXPECT_TRUE(said(executor.run(files.precti(self + "/status", {}, proc)).value()).starts_with("Name:"));
}

TEST_F(SouboryBridgeTest, WhatIsMissingOrAFolderIsNoFile) {
    tree.folder("home/Projects/folder");
    tree.file("home/Projects/file", "");
    EXPECT_EQ(read("none"), notAFile("none"));
    EXPECT_EQ(read("none/none"), notAFile("none"));
    EXPECT_EQ(read("folder"), notAFile("folder"));
    EXPECT_EQ(read("."), notAFile("Projects"));
    EXPECT_EQ(read("file/x"), notAFile("x"));
    EXPECT_EQ(read(std::string(300, 'x')), notAFile(std::string(300, 'x')));
    EXPECT_EQ(read(std::string("file\0", 5)), notAFile(std::string("file\0", 5)));
}

TEST_F(SouboryBridgeTest, APipeOrADeviceIsNoFileAndIsNotWaitedFor) {
    ASSERT_EQ(::mkfifo(tree.path("home/Projects/pipe").c_str(), 0600), 0);
    EXPECT_EQ(read("pipe"), notAFile("pipe"));
    EXPECT_EQ(write("pipe", "x"), exists("pipe"));
    AllowedFolders devices({"/dev"}, tree.standard);
    EXPECT_EQ(said(executor.run(files.precti("/dev/zero", {}, devices)).value()), notAFile("zero"));
}

TEST_F(SouboryBridgeTest, AFileThatCannotBeReadIsTold) {
    AllowedFolders proc({"/proc"}, tree.standard);
    // A process's own memory has nothing at address 0: the file opens and the read fails.
    auto memory = "/proc/" + std::to_string(::getpid()) + "/mem";
    EXPECT_EQ(said(executor.run(files.precti(memory, {}, proc)).value()),
              "Soubor mem se nepodařilo přečíst.");
}

TEST_F(SouboryBridgeTest, AFileThatMayNotBeReadIsToldAndCalledAFile) {
    tree.file("home/Projects/locked", "secret");
    tree.close("home/Projects/locked");
    const PlainUser user;
    EXPECT_EQ(read("locked"), "Soubor locked se nepodařilo přečíst.");
}

TEST_F(SouboryBridgeTest, TheSystemsOwnWordsOfAFailureGoToTheLog) {
    tree.file("home/Projects/locked", "secret");
    tree.close("home/Projects/locked");
    HeardLog log;
    {
        const PlainUser user;
        EXPECT_EQ(read("locked"), "Soubor locked se nepodařilo přečíst.");
    }
    EXPECT_EQ(log.lines(), std::vector<std::string>{"reading a file: Permission denied"});
    EXPECT_TRUE(write(std::string(300, 'x'), "x").starts_with("Zápis selhal: "));
    EXPECT_EQ(log.lines(), std::vector<std::string>{"writing a file: File name too long"});
}

TEST_F(SouboryBridgeTest, ReadAndWriteTellTheRefusalsOfThePathCheck) {
    tree.file("outside/secret", "secret");
    tree.link("home/Projects/link", tree.path("outside/secret"));
    EXPECT_EQ(read(""), "Chybí cesta k souboru.");
    EXPECT_EQ(write(" ", "x"), "Chybí cesta k souboru.");
    EXPECT_EQ(read("link"), "Cesta secret leží mimo povolené složky. Nesahám na ni.");
    EXPECT_EQ(write("../new", "x"), "Cesta new leží mimo povolené složky. Nesahám na ni.");
    EXPECT_EQ(write("~/.ssh/authorized_keys", "x"),
              "Na /.ssh nesahám za žádných okolností — jsou to přihlašovací údaje.");
    EXPECT_EQ(tree.content("outside/secret"), "secret");
    EXPECT_FALSE(tree.exists("home/new"));
    EXPECT_FALSE(tree.exists("home/.ssh"));
}

TEST_F(SouboryBridgeTest, WritesANewFileAndTheFoldersAboveIt) {
    EXPECT_EQ(write("a/b/c.txt", "ž\n"), "c.txt");
    EXPECT_EQ(tree.content("home/Projects/a/b/c.txt"), "ž\n");
}

TEST_F(SouboryBridgeTest, WritesThroughALinkThatStaysInside) {
    tree.folder("home/Projects/real");
    tree.link("home/Projects/link", "real");
    tree.link("home/Projects/later", "real/later.txt");
    EXPECT_EQ(write("link/a", "x"), "a");
    EXPECT_EQ(write("later", "x"), "later.txt");
    EXPECT_TRUE(tree.exists("home/Projects/real/a"));
    EXPECT_TRUE(tree.exists("home/Projects/real/later.txt"));
}

TEST_F(SouboryBridgeTest, WritingNeverChangesWhatExists) {
    tree.file("home/Projects/a", "old");
    tree.folder("home/Projects/folder");
    EXPECT_EQ(write("a", "new"), exists("a"));
    EXPECT_EQ(write("folder", "new"), exists("folder"));
    EXPECT_EQ(write(".", "new"), exists("Projects"));
    EXPECT_EQ(tree.content("home/Projects/a"), "old");
}

TEST_F(SouboryBridgeTest, AWriteThatFailsGivesTheReason) {
    tree.file("home/Projects/a", "old");
    EXPECT_EQ(write("a/b", "x"), "Zápis selhal: Část cesty není složka.");
    EXPECT_EQ(write(std::string("b\0c", 3), "x"), "Zápis selhal: Takovou cestu nejde použít.");
    EXPECT_EQ(write(std::string(300, 'x'), "x"), "Zápis selhal: Jméno nebo cesta je příliš dlouhá.");
    EXPECT_FALSE(tree.exists("home/Projects/b"));
    std::filesystem::remove_all(tree.path("home/Projects"));
    EXPECT_EQ(write("c", "x"), "Zápis selhal: Soubor nebo složka neexistuje.");
}

TEST_F(SouboryBridgeTest, ALinkInTheAllowedFolderToProcessRootsLeadsOut) {
    tree.link("home/Projects/root", "/proc/self/root");
    tree.file("outside/secret", "secret");
    EXPECT_EQ(read("root" + tree.path("outside/secret")),
              "Cesta secret leží mimo povolené složky. Nesahám na ni.");
}

TEST_F(SouboryBridgeTest, ADescriptorOfTheProcessIsNotAWayOut) {
    tree.file("outside/secret", "secret");
    FileDescriptor secret(::open(tree.path("outside/secret").c_str(), O_RDONLY | O_CLOEXEC));
    tree.link("home/Projects/open", "/proc/self/fd/" + std::to_string(secret.get()));
    EXPECT_EQ(read("open"), "Cesta secret leží mimo povolené složky. Nesahám na ni.");
}

} // namespace
} // namespace morvex
