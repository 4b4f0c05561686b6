#include "tests/fault/SavedFiles.h"
#include "tests/fault/TracedChild.h"
#include "tests/support/Effort.h"
#include "tests/support/EnvironmentValue.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <ostream>
#include <span>

namespace morvex {

std::ostream& operator<<(std::ostream& out, const SystemFault& fault) {
    constexpr std::string_view kinds[] = {"none",  "killed before",      "killed after",
                                          "fails", "fails from then on", "writes half"};
    return out << kinds[static_cast<std::size_t>(fault.kind)] << " at call " << fault.at << ", errno "
               << fault.code;
}

namespace {

namespace fs = std::filesystem;
using Kind = SystemFault::Kind;

constexpr std::size_t sizes[] = {10, 5'000, 70'000, 1'500'000};

/// The sizes that are tried now.
std::span<const std::size_t> sizesNow() {
    return std::span(sizes).first(cases(1, std::size(sizes)));
}

/// One save of one file, over and over, each time with another fault.
class Saving {
  public:
    Saving(const SavedFile& file, std::size_t size)
        : file_(file), old_("old" + std::string(size, 'o')), new_("new" + std::string(size, 'n')) {
        before_ = lookAfter({Kind::killedBefore, 0});
        after_ = lookAfter({Kind::none});
        EXPECT_NE(before_, after_) << file.what;
    }

    /// Every fault of this kind at every call. Gives the number of them.
    std::size_t tryAt(Kind kind, int code = 0) {
        std::size_t count = 0;
        for (std::size_t at = 0; at < calls_; ++at) {
            SystemFault fault{kind, at, code};
            SCOPED_TRACE(testing::Message() << file_.what << ", " << old_.size() << " bytes, " << fault);
            if (expectOldOrNew(fault)) ++count;
        }
        return count;
    }

  private:
    using Texts = std::vector<std::string>;

    TracedEnd save(const fs::path& home, SystemFault fault) const {
        file_.lay(home, old_);
        return runTraced([&] { return file_.change(home, new_); }, fault);
    }

    Texts lookAfter(SystemFault fault) {
        TemporaryFolder home;
        auto end = save(home.path(), fault);
        EXPECT_EQ(end.answer.value_or(false), fault.kind == Kind::none);
        calls_ = std::max(calls_, end.calls);
        return file_.look(home.path());
    }

    /// Whether the fault struck.
    bool expectOldOrNew(SystemFault fault) const {
        TemporaryFolder home;
        auto end = save(home.path(), fault);
        auto found = file_.look(home.path());
        EXPECT_TRUE(found == before_ || found == after_) << testing::PrintToString(found).substr(0, 1000);
        if (end.answer.value_or(false)) EXPECT_EQ(found, after_) << "saved only in words";
        if (fault.code == EINTR || fault.kind == Kind::writesHalf)
            EXPECT_TRUE(end.answer.value_or(false)) << "given up";
        expectNothingLeftBehind(home.path());
        return end.struck;
    }

    /// The next save takes away what the one that was cut short has left.
    void expectNothingLeftBehind(const fs::path& home) const {
        EXPECT_TRUE(file_.change(home, new_)());
        for (const auto& entry : fs::recursive_directory_iterator(home))
            if (!entry.is_directory())
                EXPECT_TRUE(std::ranges::count(file_.names, entry.path().filename().string()) == 1)
                    << entry.path().filename();
    }

    SavedFile file_;
    std::string old_;
    std::string new_;
    Texts before_;
    Texts after_;
    std::size_t calls_ = 0;
};

/// A kill takes nothing from a file system: the one in memory is the fastest.
std::string fastestFolder() {
    return fs::is_directory("/dev/shm") ? "/dev/shm" : fs::temp_directory_path().string();
}

/// Tries the faults at all calls of all saves.
void forEachSave(const std::string& what, const std::function<std::size_t(Saving&)>& faults) {
    EnvironmentValue temporary("TMPDIR", fastestFolder());
    std::size_t count = 0;
    for (const auto& file : savedFiles())
        for (auto size : sizesNow()) {
            if (size + 10 > file.largest) continue;
            Saving saving(file, size);
            count += faults(saving);
        }
    EXPECT_GT(count, 0U);
    tell("Saves " + what, count,
         testing::Test::HasFailure() ? "something was lost"
                                     : "each file the old or the new one, nothing lost");
}

TEST(SaveFault, AKillAtAnyCallLeavesTheOldFileOrTheNewOne) {
    forEachSave("killed at each system call", [](Saving& saving) {
        return saving.tryAt(Kind::killedBefore) + saving.tryAt(Kind::killedAfter);
    });
}

TEST(SaveFault, AFullDiskAtAnyCallLeavesTheOldFileOrTheNewOne) {
    forEachSave("on a full disk", [](Saving& saving) {
        return saving.tryAt(Kind::fails, ENOSPC) + saving.tryAt(Kind::failsFromThen, ENOSPC);
    });
}

TEST(SaveFault, ABrokenDiskAtAnyCallLeavesTheOldFileOrTheNewOne) {
    forEachSave("on a broken disk", [](Saving& saving) {
        return saving.tryAt(Kind::fails, EIO) + saving.tryAt(Kind::failsFromThen, EIO);
    });
}

TEST(SaveFault, AnInterruptionOrAShortWriteAtAnyCallIsGotOver) {
    forEachSave("interrupted or cut in half", [](Saving& saving) {
        return saving.tryAt(Kind::fails, EINTR) + saving.tryAt(Kind::writesHalf);
    });
}

} // namespace
} // namespace morvex
