#include "app/execution/BeneathFolder.h"
#include "app/execution/SouboryBridge.h"
#include "platform/memory/ManualExecutor.h"
#include "tests/app/execution/FileTree.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <thread>

namespace morvex {
namespace {

constexpr int attempts = 5'000;

/// Exchanges two entries of a tree as fast as it can, for as long as it lives.
class Swapper {
  public:
    Swapper(std::string left, std::string right)
        : thread_([this, left = std::move(left), right = std::move(right)] {
              while (!done_) {
                  if (::renameat2(AT_FDCWD, left.c_str(), AT_FDCWD, right.c_str(), RENAME_EXCHANGE) != 0)
                      break;
                  ++swaps_;
              }
          }) {
        while (swaps_ == 0 && !done_) std::this_thread::yield();
    }

    ~Swapper() { stop(); }

    int stop() {
        done_ = true;
        if (thread_.joinable()) thread_.join();
        return swaps_;
    }

  private:
    std::atomic<bool> done_ = false;
    std::atomic<int> swaps_ = 0;
    std::thread thread_;
};

class SwapRaceTest : public testing::Test {
  protected:
    /// How often the reading of this path gave "inside"; nothing else may ever be read.
    int readWhileSwapped(const std::string& path, const std::string& left, const std::string& right) {
        Swapper swapper(tree.path(left), tree.path(right));
        int inside = 0;
        for (int i = 0; i < attempts; ++i) {
            auto result = executor.run(soubory.precti(path, {}, tree.allowed())).value();
            if (!result) continue;
            EXPECT_EQ(*result, "inside");
            ++inside;
        }
        EXPECT_GT(swapper.stop(), 1);
        return inside;
    }

    FileTree tree;
    ManualExecutor executor;
    SouboryBridge soubory{executor};
};

TEST_F(SwapRaceTest, AFileSwappedForALinkIsNeverReadFromOutside) {
    tree.file("outside/secret", "secret");
    tree.file("home/Projects/file", "inside");
    tree.link("home/Projects/link", tree.path("outside/secret"));
    EXPECT_GT(readWhileSwapped("file", "home/Projects/file", "home/Projects/link"), 0);
}

TEST_F(SwapRaceTest, AFolderSwappedForALinkIsNeverReadFromOutside) {
    tree.file("outside/deep/file", "secret");
    tree.file("home/Projects/folder/deep/file", "inside");
    tree.link("home/Projects/link", tree.path("outside"));
    EXPECT_GT(readWhileSwapped("folder/deep/file", "home/Projects/folder", "home/Projects/link"), 0);
}

TEST_F(SwapRaceTest, AnAllowedFolderSwappedForALinkIsNeverReadFromOutside) {
    tree.file("outside/file", "secret");
    tree.file("home/Projects/inner/file", "inside");
    tree.link("home/Projects/link", tree.path("outside"));
    Swapper swapper(tree.path("home/Projects/inner"), tree.path("home/Projects/link"));
    // An allowed folder may be a link, when it is one as its path is resolved. One that becomes a link later
    // is not opened.
    for (int i = 0; i < attempts; ++i) {
        auto resolved = BeneathFolder::open(tree.path("home/Projects/inner"));
        auto file = resolved ? resolved->openFile("file") : std::unexpected(resolved.error());
        if (file) EXPECT_EQ(asText(*readUpTo(file->get(), 100)), "inside");
    }
    EXPECT_GT(swapper.stop(), 1);
}

TEST_F(SwapRaceTest, AFileSwappedForAPipeNeverBlocks) {
    tree.file("home/Projects/file", "inside");
    ASSERT_EQ(::mkfifo(tree.path("home/Projects/pipe").c_str(), 0600), 0);
    EXPECT_GT(readWhileSwapped("file", "home/Projects/file", "home/Projects/pipe"), 0);
}

TEST_F(SwapRaceTest, AFolderSwappedForALinkIsNeverWrittenThrough) {
    tree.folder("home/Projects/folder");
    tree.link("home/Projects/link", tree.path("outside"));
    int written = 0;
    {
        Swapper swapper(tree.path("home/Projects/folder"), tree.path("home/Projects/link"));
        for (int i = 0; i < attempts; ++i) {
            auto path = "folder/" + std::to_string(i % 2) + "/" + std::to_string(i);
            if (executor.run(soubory.zapis(path, "x", {}, tree.allowed())).value()) ++written;
        }
        EXPECT_GT(swapper.stop(), 1);
    }
    EXPECT_GT(written, 0);
    EXPECT_TRUE(std::filesystem::is_empty(tree.path("outside")));
}

TEST_F(SwapRaceTest, AFolderSwappedForALinkIsNeverSearchedOutside) {
    tree.file("outside/secret", "");
    tree.file("home/Projects/folder/file", "");
    tree.link("home/Projects/link", tree.path("outside"));
    Swapper swapper(tree.path("home/Projects/folder"), tree.path("home/Projects/link"));
    for (int i = 0; i < attempts; ++i) {
        auto found = executor.run(soubory.hledej({}, {}, 50, tree.allowed(), {})).value().value();
        for (const auto& path : found) EXPECT_TRUE(path.ends_with("/file")) << path;
    }
    EXPECT_GT(swapper.stop(), 1);
}

} // namespace
} // namespace morvex
