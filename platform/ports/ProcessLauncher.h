#pragma once

#include "shared/base/Error.h"

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace morvex {

using Environment = std::map<std::string, std::string>;

/// An outside program to start. It is started without a shell, and its environment is not merged with ours.
struct OutsideProgram {
    std::string binary;                  ///< absolute path
    std::vector<std::string> args = {};  ///< without the program's own name
    std::optional<std::string> cwd = {}; ///< absolute path; empty: the folder of this process
    Environment env = {};                ///< the complete environment
};

/// Receives what a child does: on one thread of the launcher, one call at a time, never from within `launch`.
class ChildListener {
  public:
    virtual ~ChildListener() = default;

    virtual void output(std::string_view chunk) = 0; ///< standard output, not empty
    virtual void errors(std::string_view chunk) = 0; ///< standard error, not empty

    /// Called once when the child has ended, with its status or the number of the signal that ended it.
    /// Output may still follow, also from the child's own children as long as one of them holds a pipe.
    virtual void exited(std::int32_t status) = 0;

    /// The last call: the child and its output have ended.
    virtual void ended() = 0;
};

enum class ChildSignal {
    terminate, ///< asks the process to end
    kill,      ///< cannot be ignored
};

/// A started child. It leads its own session and process group, without a terminal. Its process id is not
/// reused while this object lives. Safe from any thread; its listener must not destroy it.
class ChildProcess {
  public:
    /// Kills the group if the child has not ended. The listener gets no calls afterwards.
    virtual ~ChildProcess() = default;

    /// Signals the child and its whole group, also after the child itself has ended.
    virtual void signalGroup(ChildSignal signal) = 0;

    /// Signals the group and also those descendants of the child that left it, as far as the system reports
    /// them. A process signalled once is signalled again by the next call, even if the child has ended in
    /// between.
    virtual void signalAll(ChildSignal signal) = 0;

    /// Call after the child has ended, to stop waiting for more output. Output that has arrived is still
    /// delivered, then `ended` is called.
    virtual void abandonOutput() = 0;
};

/// Starts outside programs. Their standard input is empty; they inherit none of this process's open files and
/// signal settings.
class ProcessLauncher {
  public:
    virtual ~ProcessLauncher() = default;

    /// The listener must outlive the child. Fails with the words of the system.
    virtual Result<std::unique_ptr<ChildProcess>> launch(const OutsideProgram& program,
                                                         ChildListener& listener) = 0;
};

} // namespace morvex
