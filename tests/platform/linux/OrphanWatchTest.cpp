#include "platform/linux/OrphanWatch.h"

#include "platform/linux/SpawnLauncher.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <fcntl.h>
#include <future>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

namespace morvex {
namespace {

class Heard final : public ChildListener {
  public:
    void output(std::string_view chunk) override { text_ += chunk; }

    void errors(std::string_view) override {}

    void exited(std::int32_t status) override { status_.set_value(status); }

    void ended() override { all_.set_value(text_); }

    std::int32_t status() { return status_.get_future().get(); }

    /// The whole output, once it has ended.
    std::string all() { return all_.get_future().get(); }

  private:
    std::string text_;
    std::promise<std::int32_t> status_;
    std::promise<std::string> all_;
};

class OrphanWatchTest : public testing::Test {
  protected:
    OrphanWatchTest() {
        if (::mkfifo(path.c_str(), 0600) == 0)
            held = FileDescriptor(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    }

    std::unique_ptr<ChildProcess> shell(const std::string& script, Heard& heard) {
        return launcher
            .launch({.binary = "/bin/sh",
                     .args = {"-c", script},
                     .env = {{"PATH", "/usr/bin:/bin"}, {"F", path}}},
                    heard)
            .value();
    }

    /// Until somebody holds the other end of the pipe and has said so.
    void awaitHolder() const {
        pollfd entry{held.get(), POLLIN, 0};
        char byte = 0;
        EXPECT_EQ(::poll(&entry, 1, 60'000), 1);
        EXPECT_EQ(::read(held.get(), &byte, 1), 1);
    }

    [[nodiscard]] bool isLetGo(int milliseconds) const {
        pollfd entry{held.get(), POLLIN, 0};
        return ::poll(&entry, 1, milliseconds) == 1;
    }

    /// As at the sudden end of the program.
    void dropWatch() { OrphanWatch dropped = std::move(watch); }

    /// What this script starts, which holds the pipe, does not outlive the watch.
    void expectAllKilled(const std::string& script) {
        Heard heard;
        auto child = shell(script, heard);
        awaitHolder();
        dropWatch();
        EXPECT_EQ(heard.status(), SIGKILL);
        EXPECT_TRUE(isLetGo(60'000));
    }

    TemporaryFolder folder;
    std::string path = (folder.path() / "fifo").string();
    FileDescriptor held;
    OrphanWatch watch = OrphanWatch::create().value();
    SpawnLauncher launcher{&watch};
};

TEST_F(OrphanWatchTest, KillsTheWholeGroupOfAProgramThatStillRuns) {
    expectAllKilled("trap '' TERM; (exec 3>$F; printf x >&3; exec sleep 1000) & wait; exec sleep 1000");
}

TEST_F(OrphanWatchTest, KillsWhatLeftTheGroupToo) {
    expectAllKilled("setsid sh -c 'exec 3>$F; printf x >&3; exec sleep 1000' & wait");
}

TEST_F(OrphanWatchTest, OvertakesAProgramThatStartsSessionsWithoutEnd) {
    expectAllKilled("exec 3>$F; printf x >&3; for i in 1 2 3 4 5 6 7 8; do while :; do setsid sleep 1000 & "
                    "done & done; wait");
}

TEST_F(OrphanWatchTest, LeavesAloneWhatAProgramLeftBehindThatHasEnded) {
    Heard heard;
    auto child = shell("(exec 3>$F; printf x >&3; exec sleep 1000) >/dev/null 2>&1 & echo $!", heard);
    const auto left = std::stoi(heard.all());
    awaitHolder();
    child.reset();
    dropWatch();
    EXPECT_FALSE(isLetGo(0)) << "the watch has ended by now";
    ::kill(left, SIGKILL);
    EXPECT_TRUE(isLetGo(60'000));
}

TEST_F(OrphanWatchTest, AWatchThatIsGoneHindersNoProgram) {
    dropWatch();
    Heard heard;
    auto child = shell("echo x", heard);
    EXPECT_EQ(heard.all(), "x\n");
}

} // namespace
} // namespace morvex
