#pragma once

#include "foundation/ProgramLog.h"
#include "platform/memory/ManualClock.h"

#include <gtest/gtest.h>

#include <array>
#include <fcntl.h>
#include <optional>
#include <string>
#include <unistd.h>
#include <vector>

namespace morvex {

/// Redirects the program's log to a pipe, so that a test can check its content. Create it before anything
/// writes to the log. The ends of the pipe stay open, since a log that is blocked in a write may still use
/// its end later.
class HeardLog {
  public:
    HeardLog() {
        EXPECT_EQ(::pipe2(ends_.data(), O_CLOEXEC), 0);
        log_.emplace(ends_[1], clock_);
    }

    /// The lines logged since the last call, without the dates.
    std::vector<std::string> lines() {
        const auto end = "end " + std::to_string(++calls_);
        ProgramLog::write(end);
        std::vector<std::string> all;
        for (auto one = line(); one != end; one = line()) all.push_back(one);
        return all;
    }

  private:
    std::string line() const {
        std::string line;
        for (char byte = 0; ::read(ends_[0], &byte, 1) == 1 && byte != '\n';) line += byte;
        return line.substr(line.find(' ') + 1);
    }

    std::array<int, 2> ends_{};
    int calls_ = 0;
    ManualClock clock_;
    std::optional<ProgramLog> log_;
};

} // namespace morvex
