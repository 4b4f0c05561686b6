#pragma once

#include "foundation/Clock.h"
#include "platform/posix/base/LogQueue.h"
#include "shared/base/Error.h"

#include <map>
#include <string>
#include <string_view>

namespace morvex {

/// The program's log, in English, for whoever looks for the cause of what a person was told in Czech: what
/// the system and the libraries said themselves. Never a secret, a path, or content of a file.
///
/// Owned by `main`, one at a time, before the threads that write and until they have ended. A program without
/// one writes nowhere. One line of the same words a minute, and of all `mostLines`, since a peer may cause as
/// many failures as it likes.
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
    std::map<std::string, Clock::Duration> written_; ///< in the last minute
};

/// The system's own words of a `SystemError`, behind `doing`, what failed; of any other error nothing, since
/// its words are the program's own.
void logCause(std::string_view doing, const Error& error);

} // namespace morvex
