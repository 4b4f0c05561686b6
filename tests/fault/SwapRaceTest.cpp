#include "app/execution/CheckedPath.h"
#include "app/execution/FileSearch.h"
#include "app/execution/SouboryBridge.h"
#include "platform/memory/ManualExecutor.h"
#include "platform/posix/BeneathFolder.h"
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

/// The kinds that exchange links and folders; of the other two one exchanges nothing, and one files.
constexpr std::size_t kindsOfRaces = 13;

/// Attempts per kind; a million in total.
std::size_t attempts() {
    return cases(200, 1'000'000 / kindsOfRaces + 1);
}

/// The outcome of an attempt.
enum class Outcome {
    refusedByCheck,
    refusedInUse, ///< after the check had passed
    foundNothing, ///< of a search, which does not report what it skipped
    through,
};

/// Exchanges two entries of a tree as fast as possible while it lives. If the right one does not exist, the
/// left one is moved there and back, unless its name was taken meanwhile.
class Swapper {
  public:
    Swapper(std::string left, std::string right)
        : left_(std::move(left)),
          right_(std::move(right)),
          isExchange_(::access(right_.c_str(), F_OK) == 0),
          thread_([this] {
              while (!done_ && error_ == 0) isExchange_ ? exchange() : comeOrGo();
          }) {
        while (swaps_ == 0 && error_ == 0) std::this_thread::yield();
    }

    ~Swapper() { stop(); }

    /// Makes one more exchange, on the caller's thread.
    void exchange() {
        if (!rename(left_, right_, RENAME_EXCHANGE)) error_ = errno;
    }

    [[nodiscard]] std::size_t swaps() const { return swaps_; }

    /// The errno that ended the exchanges, or 0.
    [[nodiscard]] int error() const { return error_; }

    void stop() {
        done_ = true;
        if (thread_.joinable()) thread_.join();
    }

  private:
    void comeOrGo() {
        if (!rename(left_, right_, RENAME_NOREPLACE) && !rename(right_, left_, RENAME_NOREPLACE) &&
            errno != EEXIST)
            error_ = errno;
    }

    bool rename(const std::string& from, const std::string& to, unsigned how) {
        const bool isDone = ::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), how) == 0;
        if (isDone) ++swaps_;
        return isDone;
    }

    std::string left_;
    std::string right_;
    bool isExchange_;
    std::atomic<bool> done_ = false;
    std::atomic<std::size_t> swaps_ = 0;
    std::atomic<int> error_ = 0;
    std::thread thread_;
};

class SwapRaceTest : public testing::Test {
  protected:
    /// Repeats `attempt` while two entries are exchanged, until enough attempts that passed the check
    /// coincided with at least one exchange. Returns how many were refused in use.
    template <class Try> std::size_t race(const std::string& left, const std::string& right, Try attempt) {
        Swapper swapper(tree.path(left), tree.path(right));
        std::size_t through = 0;
        std::size_t refused = 0;
        std::size_t raced = 0;
        std::size_t tried = 0;
        // On a busy computer few attempts coincide with an exchange.
        const auto most = 10'000 * attempts();
        auto isDone = [&] { return raced >= attempts() && through > 0; };
        for (; !isDone() && swapper.error() == 0 && tried < most; ++tried) {
            const auto before = swapper.swaps();
            const Outcome outcome = attempt(tried, swapper);
            if (outcome == Outcome::through) ++through;
            if (outcome == Outcome::refusedInUse) ++refused;
            if (swapper.swaps() == before)
                std::this_thread::yield(); // on a busy computer the other thread may wait long
            else if (outcome != Outcome::refusedByCheck)
                ++raced;
        }
        swapper.stop();
        EXPECT_EQ(swapper.error(), 0) << "the entries could not be exchanged";
        EXPECT_GE(raced, attempts());
        EXPECT_GT(through, 0U);
        tell("Race: " + std::string(testing::UnitTest::GetInstance()->current_test_info()->name()), raced,
             "of " + std::to_string(tried) + " attempts, " + std::to_string(through) +
                 " got through inside, " + std::to_string(refused) + " were refused after the check, " +
                 std::to_string(swapper.swaps()) + " exchanges, nothing outside was touched");
        return refused;
    }

    /// Classifies a refusal of the tool: one for another reason than the path comes from the use.
    static Outcome refusal(const Error& error) {
        const auto* chyba = error.as<SouboryChyba>();
        return chyba && std::holds_alternative<SouboryChyba::Selhalo>(chyba->kind) ? Outcome::refusedInUse
                                                                                   : Outcome::refusedByCheck;
    }

    /// Performs the tools' steps with an exchange in between. An allowed folder may be reached through a link
    /// that exists when its path is checked; if it is replaced by a link later, it must not be opened.
    template <class Use>
    void raceOfAllowed(const std::string& left, const std::string& right, const std::string& allowed,
                       Use use) {
        const auto refused = race(left, right, [&](std::size_t i, Swapper& swapper) {
            const auto checked = overCestu("file", {}, tree.allowed({allowed}));
            swapper.exchange();
            if (i % 2 == 0) swapper.exchange();
            if (!checked || checked->slozka != tree.path(allowed)) return Outcome::refusedByCheck;
            auto folder = BeneathFolder::open(checked->slozka);
            return folder && use(*folder) ? Outcome::through : Outcome::refusedInUse;
        });
        EXPECT_GT(refused, 0U);
    }

    /// In a long run some attempts must have been refused in use; the tool's moment between check and use is
    /// short, so in a short run there may be none.
    static void expectRefusals(std::size_t refused) {
        if (isLongRun()) EXPECT_GT(refused, 0U);
    }

    /// Only "inside" may ever be read from this path.
    std::size_t raceReading(const std::string& path, const std::string& left, const std::string& right) {
        return race(left, right, [&](std::size_t, Swapper&) {
            auto result = executor.run(files.precti(path, {}, tree.allowed())).value();
            if (!result) return refusal(result.error());
            EXPECT_EQ(*result, "inside");
            return Outcome::through;
        });
    }

    void raceReadingOf(const std::string& left, const std::string& right, const std::string& allowed) {
        raceOfAllowed(left, right, allowed, [](const BeneathFolder& folder) {
            auto file = folder.openFile("file");
            if (file) EXPECT_EQ(asText(*readUpTo(file->get(), 100)), "inside");
            return file.has_value();
        });
    }

    /// Only "file" may ever be found by the tool.
    void raceSearching(const std::string& left, const std::string& right) {
        race(left, right, [&](std::size_t, Swapper&) {
            const auto found = executor.run(files.hledej({}, {}, 50, tree.allowed(), {})).value();
            return expectFilesAlone(found) ? Outcome::through : Outcome::foundNothing;
        });
    }

    void raceSearchingOf(const std::string& left, const std::string& right, const std::string& allowed) {
        raceOfAllowed(left, right, allowed, [](const BeneathFolder& folder) {
            return expectFilesAlone(FileSearch("", {.found = 50}).run(folder, {}));
        });
    }

    /// Returns whether anything was found.
    static bool expectFilesAlone(const Result<std::vector<std::string>>& found) {
        if (!found) return false;
        for (const auto& path : *found) EXPECT_EQ(std::filesystem::path(path).filename(), "file") << path;
        return !found->empty();
    }

    /// `inside` is the folder in its normal state; its name may lead elsewhere.
    void raceWritingOf(const std::string& left, const std::string& right, const std::string& allowed,
                       const FileDescriptor& inside) {
        raceOfAllowed(left, right, allowed, [&](const BeneathFolder& folder) {
            const bool isWritten = folder.writeNew("new", asBytes("x")).has_value();
            // Removed, so that the next attempt has to create it.
            if (isWritten) ::unlinkat(inside.get(), "new", 0);
            return isWritten;
        });
    }

    [[nodiscard]] FileDescriptor opened(const std::string& folder) {
        return FileDescriptor(::open(tree.folder(folder).c_str(), O_PATH | O_CLOEXEC));
    }

    FileTree tree;
    ManualExecutor executor;
    SouboryBridge files{executor};
};

TEST_F(SwapRaceTest, AFileSwappedForALinkIsNeverReadFromOutside) {
    tree.file("outside/secret", "secret");
    tree.file("home/Projects/file", "inside");
    tree.link("home/Projects/link", tree.path("outside/secret"));
    expectRefusals(raceReading("file", "home/Projects/file", "home/Projects/link"));
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
    expectRefusals(raceReading("folder/deep/file", "home/Projects/folder", "home/Projects/link"));
}

TEST_F(SwapRaceTest, AFolderAboveTheAllowedOneSwappedForALinkIsNeverReadFromOutside) {
    tree.file("outside/Projects/file", "secret");
    tree.file("home/Projects/file", "inside");
    tree.link("link", tree.path("outside"));
    raceReadingOf("home", "link", "home/Projects");
}

TEST_F(SwapRaceTest, AnAllowedFolderSwappedForALinkIsNeverReadFromOutside) {
    tree.file("outside/file", "secret");
    tree.file("home/Projects/inner/file", "inside");
    tree.link("home/Projects/link", tree.path("outside"));
    raceReadingOf("home/Projects/inner", "home/Projects/link", "home/Projects/inner");
}

TEST_F(SwapRaceTest, AFileSwappedForAPipeNeverBlocks) {
    tree.file("home/Projects/file", "inside");
    ASSERT_EQ(::mkfifo(tree.path("home/Projects/pipe").c_str(), 0600), 0);
    raceReading("file", "home/Projects/file", "home/Projects/pipe");
}

TEST_F(SwapRaceTest, AFolderSwappedForALinkIsNeverWrittenThrough) {
    const auto folder = opened("home/Projects/folder");
    tree.link("home/Projects/link", tree.path("outside"));
    const auto refused = race("home/Projects/folder", "home/Projects/link", [&](std::size_t i, Swapper&) {
        auto name = std::to_string(i % 2) + "/file";
        auto written = executor.run(files.zapis("folder/" + name, "x", {}, tree.allowed())).value();
        // The file is removed, and sometimes its folder, so that the next attempt has to create them.
        ::unlinkat(folder.get(), name.c_str(), 0);
        if (i % 5 == 0) ::unlinkat(folder.get(), std::to_string(i % 2).c_str(), AT_REMOVEDIR);
        if (!written) return refusal(written.error());
        EXPECT_EQ(*written, "file");
        return Outcome::through;
    });
    expectRefusals(refused);
    EXPECT_TRUE(std::filesystem::is_empty(tree.path("outside")));
}

TEST_F(SwapRaceTest, AFolderAboveTheAllowedOneSwappedForALinkIsNeverWrittenThrough) {
    tree.folder("outside/Projects");
    const auto inside = opened("home/Projects");
    tree.link("link", tree.path("outside"));
    raceWritingOf("home", "link", "home/Projects", inside);
    EXPECT_TRUE(std::filesystem::is_empty(tree.path("outside/Projects")));
}

TEST_F(SwapRaceTest, AnAllowedFolderSwappedForALinkIsNeverWrittenThrough) {
    const auto inside = opened("home/Projects/inner");
    tree.link("home/Projects/link", tree.path("outside"));
    raceWritingOf("home/Projects/inner", "home/Projects/link", "home/Projects/inner", inside);
    EXPECT_TRUE(std::filesystem::is_empty(tree.path("outside")));
}

TEST_F(SwapRaceTest, ALinkToWhatDoesNotExistThatComesAndGoesIsNeverWrittenThrough) {
    const auto inside = opened("home/Projects");
    tree.link("home/Projects/new", tree.path("outside/made"));
    race("home/Projects/new", "home/Projects/away", [&](std::size_t, Swapper&) {
        auto written = executor.run(files.zapis("new", "x", {}, tree.allowed())).value();
        if (!written) return refusal(written.error());
        ::unlinkat(inside.get(), "new", 0);
        return Outcome::through;
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
