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
    constexpr std::string_view kinds[] = {"none",      "killed",      "killed halfway", "fails",
                                          "disk full", "disk broken", "writes half"};
    return out << kinds[static_cast<std::size_t>(fault.kind)] << " at call " << fault.at << ", errno "
               << fault.code;
}

namespace {

namespace fs = std::filesystem;
using Kind = SystemFault::Kind;

constexpr std::size_t smallest = 10;
constexpr std::size_t largest = 1'500'000;
/// The larger ones exceed a database page and a library's buffer.
constexpr std::size_t sizes[] = {smallest, 70'000, 5'000, largest};

/// The sizes to try in this run.
std::span<const std::size_t> sizesNow() {
    return std::span(sizes).first(cases(2, std::size(sizes)));
}

/// Repeats the save of one file, each time with another fault.
class Saving {
  public:
    Saving(const SavedFile& file, std::size_t size)
        : file_(file),
          size_(size),
          old_("old" + std::string(size, 'o')),
          new_("new" + std::string(size, 'n')) {
        TemporaryFolder home;
        file_.lay(home.path(), old_);
        before_ = file_.look(home.path());
        after_ = lookAfterwards();
        EXPECT_NE(before_, after_) << file.what;
    }

    /// Tries this kind of fault at each call where it can occur, and returns the number of faults. Some are
    /// skipped where others are similar; in a short run many are.
    std::size_t tryAll(Kind kind, int code = 0, FaultTime time = FaultTime::work) const {
        for (std::size_t count = 0;; ++count) {
            SystemFault fault{kind, count * step(kind, code), code};
            SCOPED_TRACE(testing::Message() << file_.what << ", " << old_.size() << " bytes, " << fault);
            if (!expectOldOrNew(fault, time)) return count;
        }
    }

  private:
    using Texts = std::vector<std::string>;

    /// The distance between two calls with a fault: neighbouring calls, other codes and other sizes have
    /// similar results.
    [[nodiscard]] std::size_t step(Kind kind, int code) const {
        if (kind == Kind::writesHalf || kind == Kind::killedHalfway) return 1;
        if (isLongRun()) return size_ < largest ? 1 : 4;
        if (size_ > smallest) return 24;
        const bool isEachTried = kind == Kind::killed || (kind == Kind::fails && code == EIO);
        return isEachTried ? 1 : 6;
    }

    TracedEnd save(const fs::path& home, SystemFault fault, FaultTime time) const {
        file_.lay(home, old_);
        return runTraced([&] { return file_.change(home, new_); }, fault, time);
    }

    [[nodiscard]] Texts lookAfterwards() const {
        TemporaryFolder home;
        EXPECT_EQ(save(home.path(), {}, FaultTime::work).answer, true);
        return file_.look(home.path());
    }

    /// Returns whether the fault occurred.
    bool expectOldOrNew(SystemFault fault, FaultTime time) const {
        TemporaryFolder home;
        auto end = save(home.path(), fault, time);
        auto found = file_.look(home.path());
        const bool isKill = fault.kind == Kind::killed || fault.kind == Kind::killedHalfway;
        if (!isKill) EXPECT_TRUE(end.answer.has_value()) << "ended by the fault";
        EXPECT_TRUE(found == before_ || found == after_) << testing::PrintToString(found).substr(0, 1000);
        if (end.answer.value_or(false)) EXPECT_EQ(found, after_) << "saved only in words";
        const bool isPassing = fault.code == EINTR || fault.kind == Kind::writesHalf;
        if (file_.isPatient && isPassing) EXPECT_TRUE(end.answer.value_or(false)) << "given up";
        expectNothingLeftBehind(home.path());
        return end.struck;
    }

    /// The next save must remove the remains of the interrupted one.
    void expectNothingLeftBehind(const fs::path& home) const {
        EXPECT_TRUE(file_.change(home, new_)());
        for (const auto& entry : fs::recursive_directory_iterator(home))
            if (!entry.is_directory())
                EXPECT_TRUE(std::ranges::count(file_.names, entry.path().filename().string()) == 1)
                    << entry.path().filename();
    }

    SavedFile file_;
    std::size_t size_; ///< bytes of text
    std::string old_;
    std::string new_;
    Texts before_;
    Texts after_;
};

/// A killed process does not harm a file system, so the one in memory is used, which is the fastest.
std::string fastestFolder() {
    return fs::is_directory("/dev/shm") ? "/dev/shm" : fs::temp_directory_path().string();
}

/// Tries the faults at all calls of all saves.
void forEachSave(const std::string& what, const std::function<std::size_t(const Saving&)>& faults) {
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
    forEachSave("killed at each system call", [](const Saving& saving) {
        return saving.tryAll(Kind::killed) + saving.tryAll(Kind::killedHalfway);
    });
}

TEST(SaveFault, AFullDiskAtAnyCallLeavesTheOldFileOrTheNewOne) {
    forEachSave("on a full disk", [](const Saving& saving) {
        return saving.tryAll(Kind::fails, ENOSPC) + saving.tryAll(Kind::diskFull, ENOSPC);
    });
}

TEST(SaveFault, ABrokenDiskAtAnyCallLeavesTheOldFileOrTheNewOne) {
    forEachSave("on a broken disk", [](const Saving& saving) {
        return saving.tryAll(Kind::fails, EIO) + saving.tryAll(Kind::diskBroken, EIO);
    });
}

TEST(SaveFault, AnInterruptionOrAShortWriteAtAnyCallIsGotOver) {
    forEachSave("interrupted or cut in half", [](const Saving& saving) {
        return saving.tryAll(Kind::fails, EINTR) + saving.tryAll(Kind::writesHalf);
    });
}

TEST(SaveFault, ADiskThatFailsWhileAProgramStartsCostsNothingThatWasSavedBefore) {
    forEachSave("after a failure at the start", [](const Saving& saving) {
        return saving.tryAll(Kind::fails, EIO, FaultTime::preparation) +
               saving.tryAll(Kind::fails, EMFILE, FaultTime::preparation) +
               saving.tryAll(Kind::diskBroken, EIO, FaultTime::preparation);
    });
}

} // namespace
} // namespace morvex
