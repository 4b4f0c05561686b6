#pragma once

#include "foundation/Clock.h"
#include "platform/posix/base/LogQueue.h"
#include "shared/base/Error.h"

#include <map>
#include <string>
#include <string_view>

namespace morvex {

/// The program's log, in English. It records the original messages of the system and the libraries, for
/// finding the cause of what the user was told in Czech. Never contains a secret, a path, or the content of a
/// file.
///
/// Owned by `main`, only one at a time; it must live longer than the threads that write. A program without a
/// log writes nothing. The same line is written at most once a minute, and at most `mostLines` lines in
/// total, since a peer may cause any number of failures.
class ProgramLog {
  public:
    static constexpr std::size_t mostLines = 60;

    ProgramLog(int descriptor, const Clock& clock);
    ~ProgramLog();
    ProgramLog(const ProgramLog&) = delete;
    ProgramLog& operator=(const ProgramLog&) = delete;

    /// From any thread; never waits for the descriptor. What could move a cursor is replaced.
    static void write(std::string_view line);

  private:
    void add(std::string line);

    LogQueue queue_;
    const Clock& clock_;
    std::map<std::string, Clock::Duration> written_; ///< lines of the last minute, with their time
};

/// Logs the system's own words of a `SystemError` with the prefix `doing`, the action that failed. Logs
/// nothing for any other error, since its words are the program's own.
void logCause(std::string_view doing, const Error& error);

} // namespace morvex
