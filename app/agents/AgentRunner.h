#pragma once

#include "app/agents/Adaptery.h"
#include "app/agents/AgentChyba.h"
#include "app/agents/AgentDetection.h"
#include "app/agents/AgentListener.h"
#include "app/agents/Bezici.h"
#include "app/agents/Prubeh.h"
#include "app/programs/ProgramDiscovery.h"
#include "foundation/Clock.h"
#include "foundation/Task.h"
#include "platform/ports/ProcessLauncher.h"
#include "shared/wire/MacStatus.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>

namespace morvex {

class ProcessRunner;
class ProgressQueue;

/// Runs a coding agent as a task in the background: starts it in a folder with an instruction, follows its
/// events, remembers its session and returns its final text. Only one task runs at a time, whatever the agent
/// and folder. Main thread only; awaited tasks end before this object is destroyed. The caller checks which
/// folders are allowed. See docs/agents.md.
class AgentRunner {
  public:
    using Bezici = morvex::Bezici;
    using Chyba = AgentChyba;

    struct Services {
        ProcessLauncher& launcher;
        Clock& clock;
        ProgramDiscovery& discovery;
        Executor& main;
        Executor& workers;
    };

    struct Assignment {
        std::string requestID;
        std::optional<Uuid> workItemID;
        std::string nastroj; ///< "codex" or "claude-code"
        std::string instrukce;
        std::string slozka;                ///< absolute path
        std::optional<std::string> relace; ///< the session to continue, unless this object remembers one
        /// Ends the preparation and prevents the start of the agent. Does not stop a running agent; `zrus`
        /// does that.
        std::stop_token cancellation = {};
        /// Whether the folder is still allowed; asked before each start of the agent, but not during a run.
        std::function<bool()> isAllowed = [] { return true; };
    };

    using Posluchac = AgentListener;

    struct Vysledek {
        std::string text;
        std::optional<std::string> relace;

        bool operator==(const Vysledek&) const = default;
    };

    /// `stop` ends the running task and lets none start; for the end of the program.
    AgentRunner(Services services, std::stop_token stop, Adaptery adaptery = knownAdapters());
    ~AgentRunner();
    AgentRunner(const AgentRunner&) = delete;
    AgentRunner& operator=(const AgentRunner&) = delete;

    /// Looks for the agent, its version and its login; takes some seconds. Never fails: `problem` says what
    /// is wrong.
    Task<AgentStatus> zjisti(std::string nastroj);

    /// Runs a task to its end, for at most 15 minutes (twice that if its session turns out to be gone). Fails
    /// with `Chyba` before an agent has run, and with `TalkSpanError` (`Cancelled`, `TimedOut`, `ToolFailed`)
    /// afterwards. The listener is called for the last time before the task ends.
    Task<Result<Vysledek>> spust(Assignment assignment, Posluchac posluchac);

    /// Asks the running agent to end. False if none is running.
    bool zrus();

    /// Whether an agent was started and its end has not been processed yet. It may have exited already, with
    /// output still to be read.
    [[nodiscard]] bool isRunning() const { return proces_ != nullptr; }

    /// The running task, or null. The pointer must not be kept over an await.
    [[nodiscard]] const Bezici* bezici() const;

  private:
    struct FoundAgent {
        std::shared_ptr<const AgentAdapter> adapter;
        std::string binary;
    };

    [[nodiscard]] std::shared_ptr<const AgentAdapter> adapter(const std::string& nastroj) const;
    [[nodiscard]] Result<void> checkFree() const;
    Task<Result<FoundAgent>> prepare(Assignment assignment);
    Task<Result<Vysledek>> carryOut(FoundAgent foundAgent, Assignment assignment, Posluchac posluchac);
    Task<Result<Prubeh>> attempt(FoundAgent foundAgent, Assignment assignment,
                                 std::shared_ptr<ProgressQueue> progressQueue);
    Task<Result<Prubeh>> runProgram(std::shared_ptr<const AgentAdapter> adapter, OutsideProgram program,
                                    std::shared_ptr<ProgressQueue> progressQueue);
    /// Checks the conditions that may have changed since the task was accepted.
    [[nodiscard]] Result<void> overStart(const Assignment& assignment) const;
    [[nodiscard]] Result<void> checkNotStopped(const std::stop_token& cancellation) const;
    void requireMainThread() const;

    Services services_;
    std::stop_token stop_;
    AgentDetection detekce_;
    const Adaptery adaptery_;
    std::shared_ptr<ProcessRunner> proces_;
    std::shared_ptr<Bezici> bezici_;
    std::map<std::string, std::string> relace_; ///< session by agent and folder
};

} // namespace morvex
