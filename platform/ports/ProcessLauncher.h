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

/// An outside program to start. There is no shell in between and nothing is merged in.
struct OutsideProgram {
    std::string binary;                  ///< absolute path
    std::vector<std::string> args = {};  ///< without the program's own name
    std::optional<std::string> cwd = {}; ///< absolute path; absent: as this process has it
    Environment env = {};                ///< the complete environment
};

/// Hears what a child does: on one thread of the launcher's, one call at a time, never from within `launch`.
class ChildListener {
  public:
    virtual ~ChildListener() = default;

    virtual void output(std::string_view chunk) = 0; ///< of standard output, not empty
    virtual void errors(std::string_view chunk) = 0; ///< of standard error, not empty

    /// The child has ended, once: its status, or the number of the signal that ended it. Output may still
    /// come, also from the child's own children as long as one holds a pipe.
    virtual void exited(std::int32_t status) = 0;

    /// The last call: the child and its output have ended.
    virtual void ended() = 0;
};

enum class ChildSignal {
    terminate, ///< asks to end
    kill,      ///< cannot be ignored
};

/// A child that was started. It leads a session and a process group of its own, without a terminal. Its
/// number is not given to another process while this object lives. Safe from any thread; not to be destroyed
/// by its listener.
class ChildProcess {
  public:
    /// Kills the group if the child has not ended. The listener hears nothing afterwards.
    virtual ~ChildProcess() = default;

    /// To the child and all of its group, also once the child itself has ended.
    virtual void signalGroup(ChildSignal signal) = 0;

    /// Also to what has left the group but descends from the child, as far as the system tells of it.
    /// Whatever was told to end once is told so again by the next call, even when the child has ended in
    /// between.
    virtual void signalAll(ChildSignal signal) = 0;

    /// Once the child has ended: waits for no more output. What is there is still told, then `ended` comes.
    virtual void abandonOutput() = 0;
};

/// Starts outside programs. Standard input is at its end from the start; of this process's open files and
/// signal settings the child gets nothing.
class ProcessLauncher {
  public:
    virtual ~ProcessLauncher() = default;

    /// The listener outlives the child. Fails with the words of the system.
    virtual Result<std::unique_ptr<ChildProcess>> launch(const OutsideProgram& program,
                                                         ChildListener& listener) = 0;
};

} // namespace morvex
