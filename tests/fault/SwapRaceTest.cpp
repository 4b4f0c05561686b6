#include "app/execution/BeneathFolder.h"
#include "app/execution/FileSearch.h"
#include "app/execution/SouboryBridge.h"
#include "platform/memory/ManualExecutor.h"
#include "tests/app/execution/FileTree.h"
#include "tests/support/Effort.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <utility>

namespace morvex {
namespace {

constexpr std::size_t kindsOfRaces = 15;

/// Of each kind of race; a million in all.
std::size_t attempts() {
    return cases(200, 1'000'000 / kindsOfRaces + 1);
}

/// Exchanges two entries of a tree as fast as it can, for as long as it lives. Where the right one does not
/// exist, the left one goes there and comes back, unless its name was taken meanwhile.
class Swapper {
  public:
    Swapper(std::string left, std::string right)
        : thread_([this, left = std::move(left), right = std::move(right)] {
              const bool isExchange = ::access(right.c_str(), F_OK) == 0;
              const auto* from = left.c_str();
              const auto* to = right.c_str();
              while (!done_ && error_ == 0) {
                  const unsigned how = isExchange ? RENAME_EXCHANGE : RENAME_NOREPLACE;
                  if (::renameat2(AT_FDCWD, from, AT_FDCWD, to, how) == 0) {
                      ++swaps_;
                      if (!isExchange) std::swap(from, to);
                  } else if (isExchange || errno != EEXIST) {
                      error_ = errno;
                  }
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
        // While others use the computer, few attempts meet an exchange.
        const auto most = 10'000 * attempts();
        auto isDone = [&] { return raced >= attempts() && through > 0; };
        for (; !isDone() && swapper.error() == 0 && tried < most; ++tried) {
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
                 "nothing outside was touched");
    }

    /// Nothing but "inside" may ever be read from this path.
    void raceReading(const std::string& path, const std::string& left, const std::string& right) {
        race(left, right, [&](std::size_t) {
            auto result = executor.run(soubory.precti(path, {}, tree.allowed())).value();
            if (result) EXPECT_EQ(*result, "inside");
            return result.has_value();
        });
    }

    /// The tool is asked, and nothing but "file" may ever be found.
    void raceSearching(const std::string& left, const std::string& right) {
        race(left, right, [&](std::size_t) {
            return expectFilesAlone(executor.run(soubory.hledej({}, {}, 50, tree.allowed(), {})).value());
        });
    }

    /// The same of an allowed folder whose path was resolved before: one that comes to lie behind a link
    /// later is not opened.
    void raceSearchingOf(const std::string& left, const std::string& right, const std::string& allowed) {
        race(left, right, [&](std::size_t) {
            auto folder = BeneathFolder::open(tree.path(allowed));
            return folder && expectFilesAlone(FileSearch("", {.found = 50}).run(*folder, {}));
        });
    }

    /// Whether anything was found.
    static bool expectFilesAlone(const Result<std::vector<std::string>>& found) {
        if (!found) return false;
        for (const auto& path : *found) EXPECT_EQ(std::filesystem::path(path).filename(), "file") << path;
        return !found->empty();
    }

    /// Likewise for writing. `inside` is the folder while all is well, whose name may lead elsewhere.
    void raceWriting(const std::string& left, const std::string& right, const std::string& allowed,
                     const FileDescriptor& inside) {
        race(left, right, [&](std::size_t) {
            auto folder = BeneathFolder::open(tree.path(allowed));
            const bool isWritten = folder && folder->writeNew("new", asBytes("x"));
            // Taken away again, so that the next attempt has to make it.
            if (isWritten) ::unlinkat(inside.get(), "new", 0);
            return isWritten;
        });
    }

    [[nodiscard]] FileDescriptor opened(const std::string& folder) {
        return FileDescriptor(::open(tree.folder(folder).c_str(), O_PATH | O_CLOEXEC));
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
    const auto folder = opened("home/Projects/folder");
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

TEST_F(SwapRaceTest, AFolderAboveTheAllowedOneSwappedForALinkIsNeverWrittenThrough) {
    tree.folder("outside/Projects");
    const auto inside = opened("home/Projects");
    tree.link("link", tree.path("outside"));
    raceWriting("home", "link", "home/Projects", inside);
    EXPECT_TRUE(std::filesystem::is_empty(tree.path("outside/Projects")));
}

TEST_F(SwapRaceTest, AnAllowedFolderSwappedForALinkIsNeverWrittenThrough) {
    const auto inside = opened("home/Projects/inner");
    tree.link("home/Projects/link", tree.path("outside"));
    raceWriting("home/Projects/inner", "home/Projects/link", "home/Projects/inner", inside);
    EXPECT_TRUE(std::filesystem::is_empty(tree.path("outside")));
}

TEST_F(SwapRaceTest, ALinkToWhatDoesNotExistThatComesAndGoesIsNeverWrittenThrough) {
    const auto inside = opened("home/Projects");
    tree.link("home/Projects/new", tree.path("outside/made"));
    race("home/Projects/new", "home/Projects/away", [&](std::size_t) {
        auto written = executor.run(soubory.zapis("new", "x", {}, tree.allowed())).value();
        if (written) ::unlinkat(inside.get(), "new", 0);
        return written.has_value();
    });
    EXPECT_TRUE(std::filesystem::is_empty(tree.path("outside")));
}

TEST_F(SwapRaceTest, AFolderSwappedForALinkIsNeverSearchedOutside) {
    tree.file("outside/secret", "");
    tree.file("home/Projects/folder/file", "");
    tree.link("home/Projects/link", tree.path("outside"));
    raceSearching("home/Projects/folder", "home/Projects/link");
}

TEST_F(SwapRaceTest, AFolderDeepDownSwappedForALinkIsNeverSearchedOutside) {
    tree.file("outside/deep/secret", "");
    tree.file("home/Projects/folder/deep/file", "");
    tree.link("home/Projects/folder/link", tree.path("outside/deep"));
    raceSearching("home/Projects/folder/deep", "home/Projects/folder/link");
}

TEST_F(SwapRaceTest, AFileSwappedForALinkIsNeverSearchedOutside) {
    tree.file("outside/secret", "");
    tree.file("home/Projects/file", "");
    tree.link("link", tree.path("outside"));
    raceSearching("home/Projects/file", "link");
}

TEST_F(SwapRaceTest, AFolderAboveTheAllowedOneSwappedForALinkIsNeverSearchedOutside) {
    tree.file("outside/Projects/secret", "");
    tree.file("home/Projects/file", "");
    tree.link("link", tree.path("outside"));
    raceSearchingOf("home", "link", "home/Projects");
}

TEST_F(SwapRaceTest, AnAllowedFolderSwappedForALinkIsNeverSearchedOutside) {
    tree.file("outside/secret", "");
    tree.file("home/Projects/inner/file", "");
    tree.link("home/Projects/link", tree.path("outside"));
    raceSearchingOf("home/Projects/inner", "home/Projects/link", "home/Projects/inner");
}

} // namespace
} // namespace morvex
