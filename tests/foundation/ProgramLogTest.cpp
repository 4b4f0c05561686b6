#include "foundation/ProgramLog.h"

#include "platform/memory/ManualClock.h"
#include "shared/base/SystemError.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <fcntl.h>
#include <optional>
#include <unistd.h>

namespace morvex {
namespace {

using namespace std::chrono_literals;

/// A log into a pipe. The ends stay open, since a log that hangs in a write may use its own later.
class ProgramLogTest : public testing::Test {
  protected:
    ProgramLogTest() {
        EXPECT_EQ(::pipe2(ends_, O_CLOEXEC), 0);
        log.emplace(ends_[1], clock);
    }

    /// The next line, without its date.
    std::string line() const {
        std::string line;
        for (char byte = 0; ::read(ends_[0], &byte, 1) == 1 && byte != '\n';) line += byte;
        return line.substr(line.find(' ') + 1);
    }

    ManualClock clock;
    std::optional<ProgramLog> log;

  private:
    int ends_[2]{};
};

TEST_F(ProgramLogTest, HasTheSystemsOwnWordsBehindWhatFailed) {
    logCause("saving", SystemError{ENOSPC});
    logCause("reading", TextError{"Česká slova programu."});
    logCause("reading", SystemError{EACCES});
    EXPECT_EQ(line(), "saving: No space left on device");
    EXPECT_EQ(line(), "reading: Permission denied");
}

TEST_F(ProgramLogTest, TellsTheSameOnceAMinute) {
    for (int i = 0; i < 3; ++i) ProgramLog::write("same");
    clock.advance(59s);
    ProgramLog::write("same");
    ProgramLog::write("other");
    clock.advance(1s);
    ProgramLog::write("same");
    EXPECT_EQ(line(), "same");
    EXPECT_EQ(line(), "other");
    EXPECT_EQ(line(), "same");
}

TEST_F(ProgramLogTest, HasABoundForAMinute) {
    for (int i = 0; i < 1000; ++i) ProgramLog::write("line " + std::to_string(i));
    clock.advance(1min);
    ProgramLog::write("later");
    for (std::size_t i = 0; i < ProgramLog::mostLines; ++i) EXPECT_EQ(line(), "line " + std::to_string(i));
    EXPECT_EQ(line(), "later");
}

TEST_F(ProgramLogTest, IsOneLineWithoutControlCharacters) {
    ProgramLog::write("a\nb\x1b[2J");
    EXPECT_EQ(line(), "a b\uFFFD[2J");
}

TEST_F(ProgramLogTest, IsNotNeeded) {
    log.reset();
    ProgramLog::write("nobody");
    log.emplace(STDERR_FILENO, clock);
}

} // namespace
} // namespace morvex
