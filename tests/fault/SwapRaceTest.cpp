#include "app/execution/BeneathFolder.h"
#include "app/execution/SouboryBridge.h"
#include "platform/memory/ManualExecutor.h"
#include "tests/app/execution/FileTree.h"
#include "tests/support/Effort.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <thread>

namespace morvex {
namespace {

/// Of each kind of race; a million in all.
std::size_t attempts() {
    return cases(200, 125'000);
}

/// Exchanges two entries of a tree as fast as it can, for as long as it lives.
class Swapper {
  public:
    Swapper(std::string left, std::string right)
        : thread_([this, left = std::move(left), right = std::move(right)] {
              while (!done_ && error_ == 0) {
                  if (::renameat2(AT_FDCWD, left.c_str(), AT_FDCWD, right.c_str(), RENAME_EXCHANGE) != 0)
                      error_ = errno;
                  else
                      ++swaps_;
              }
          }) {
        while (swaps_ == 0 && error_ == 0) std::this_thread::yield();
    }

    ~Swapper() { stop(); }

    [[nodiscard]] std::size_t swaps() const { return swaps_; }

    /// Why there are no more exchanges, or 0.
    [[nodiscard]] int error() const { return error_; }

    void stop() {
        done_ = true;
        if (thread_.joinable()) thread_.join();
    }

  private:
    std::atomic<bool> done_ = false;
    std::atomic<std::size_t> swaps_ = 0;
    std::atomic<int> error_ = 0;
    std::thread thread_;
};

class SwapRaceTest : public testing::Test {
  protected:
    /// Tries this while two entries are exchanged, until so many attempts met at least one exchange, and says
    /// how often it got through.
    template <class Try> void race(const std::string& left, const std::string& right, Try attempt) {
        Swapper swapper(tree.path(left), tree.path(right));
        std::size_t through = 0;
        std::size_t raced = 0;
        std::size_t tried = 0;
        auto isDone = [&] { return raced >= attempts() && through > 0; };
        for (; !isDone() && swapper.error() == 0 && tried < 1'000 * attempts(); ++tried) {
            const auto before = swapper.swaps();
            if (attempt(tried)) ++through;
            if (swapper.swaps() != before) ++raced;
            // On a busy computer the other thread may wait for long.
            if (tried % 100 == 0) std::this_thread::yield();
        }
        swapper.stop();
        EXPECT_EQ(swapper.error(), 0) << "the entries could not be exchanged";
        EXPECT_GE(raced, attempts());
        EXPECT_GT(through, 0U);
        tell("Race: " + std::string(testing::UnitTest::GetInstance()->current_test_info()->name()), raced,
             "of " + std::to_string(tried) + " attempts, " + std::to_string(through) +
                 " got through inside, " + std::to_string(swapper.swaps()) + " exchanges, " +
                 (HasFailure() ? "something outside was touched" : "nothing outside was touched"));
    }

    /// Nothing but "inside" may ever be read from this path.
    void raceReading(const std::string& path, const std::string& left, const std::string& right) {
        race(left, right, [&](std::size_t) {
            auto result = executor.run(soubory.precti(path, {}, tree.allowed())).value();
            if (result) EXPECT_EQ(*result, "inside");
            return result.has_value();
        });
    }

    FileTree tree;
    ManualExecutor executor;
    SouboryBridge soubory{executor};
};

TEST_F(SwapRaceTest, AFileSwappedForALinkIsNeverReadFromOutside) {
    tree.file("outside/secret", "secret");
    tree.file("home/Projects/file", "inside");
    tree.link("home/Projects/link", tree.path("outside/secret"));
    raceReading("file", "home/Projects/file", "home/Projects/link");
}

TEST_F(SwapRaceTest, ALinkSwappedForALinkIsNeverReadFromOutside) {
    tree.file("outside/secret", "secret");
    tree.file("home/Projects/file", "inside");
    tree.link("home/Projects/link", "file");
    tree.link("home/Projects/other", tree.path("outside/secret"));
    raceReading("link", "home/Projects/link", "home/Projects/other");
}

TEST_F(SwapRaceTest, AFolderSwappedForALinkIsNeverReadFromOutside) {
    tree.file("outside/deep/file", "secret");
    tree.file("home/Projects/folder/deep/file", "inside");
    tree.link("home/Projects/link", tree.path("outside"));
    raceReading("folder/deep/file", "home/Projects/folder", "home/Projects/link");
}

TEST_F(SwapRaceTest, AFolderAboveTheAllowedOneSwappedForALinkIsNeverReadFromOutside) {
    tree.file("outside/Projects/file", "secret");
    tree.file("home/Projects/file", "inside");
    tree.link("link", tree.path("outside"));
    // An allowed folder may lie behind a link, when it does so as its path is resolved. One that comes to lie
    // behind one later is not opened.
    race("home", "link", [this](std::size_t) {
        auto folder = BeneathFolder::open(tree.path("home/Projects"));
        auto file = folder ? folder->openFile("file") : std::unexpected(folder.error());
        if (file) EXPECT_EQ(asText(*readUpTo(file->get(), 100)), "inside");
        return file.has_value();
    });
}

TEST_F(SwapRaceTest, AnAllowedFolderSwappedForALinkIsNeverReadFromOutside) {
    tree.file("outside/file", "secret");
    tree.file("home/Projects/inner/file", "inside");
    tree.link("home/Projects/link", tree.path("outside"));
    race("home/Projects/inner", "home/Projects/link", [this](std::size_t) {
        auto folder = BeneathFolder::open(tree.path("home/Projects/inner"));
        auto file = folder ? folder->openFile("file") : std::unexpected(folder.error());
        if (file) EXPECT_EQ(asText(*readUpTo(file->get(), 100)), "inside");
        return file.has_value();
    });
}

TEST_F(SwapRaceTest, AFileSwappedForAPipeNeverBlocks) {
    tree.file("home/Projects/file", "inside");
    ASSERT_EQ(::mkfifo(tree.path("home/Projects/pipe").c_str(), 0600), 0);
    raceReading("file", "home/Projects/file", "home/Projects/pipe");
}

TEST_F(SwapRaceTest, AFolderSwappedForALinkIsNeverWrittenThrough) {
    FileDescriptor folder(::open(tree.folder("home/Projects/folder").c_str(), O_PATH | O_CLOEXEC));
    tree.link("home/Projects/link", tree.path("outside"));
    race("home/Projects/folder", "home/Projects/link", [&](std::size_t i) {
        auto name = std::to_string(i % 2) + "/file";
        auto written = executor.run(soubory.zapis("folder/" + name, "x", {}, tree.allowed())).value();
        // Taken away again, and its folder now and then, so that the next attempt has to make them.
        ::unlinkat(folder.get(), name.c_str(), 0);
        if (i % 5 == 0) ::unlinkat(folder.get(), std::to_string(i % 2).c_str(), AT_REMOVEDIR);
        if (written) EXPECT_EQ(*written, "file");
        return written.has_value();
    });
    EXPECT_TRUE(std::filesystem::is_empty(tree.path("outside")));
}

TEST_F(SwapRaceTest, AFolderSwappedForALinkIsNeverSearchedOutside) {
    tree.file("outside/secret", "");
    tree.file("home/Projects/folder/file", "");
    tree.link("home/Projects/link", tree.path("outside"));
    race("home/Projects/folder", "home/Projects/link", [this](std::size_t) {
        auto found = executor.run(soubory.hledej({}, {}, 50, tree.allowed(), {})).value().value();
        for (const auto& path : found) EXPECT_TRUE(path.ends_with("/file")) << path;
        return !found.empty();
    });
}

} // namespace
} // namespace morvex
