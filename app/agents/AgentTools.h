#pragma once

#include "app/agents/AgentNews.h"
#include "app/agents/AgentReports.h"
#include "app/agents/AgentRunner.h"
#include "app/agents/HistorieAgentu.h"
#include "app/tools/ToolTable.h"
#include "foundation/TaskScope.h"

#include <functional>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

namespace morvex {

struct AgentRun;
struct AgentRename;

/// The tools `mac.codex.*`, `mac.claude.*` and `mac.agent.rename`. A run is answered as soon as it is
/// accepted and continues in one background task. Only one runs at a time, whatever the agent. Main thread.
class AgentTools {
  public:
    /// The folders that the user allowed.
    struct Folders {
        std::function<std::vector<std::string>()> aliasy;
        std::function<std::optional<std::string>(const std::optional<std::string>& alias)> slozkaProAlias;
        std::function<bool(const std::string& cesta)> isAllowed; ///< asked without reading the disk
    };

    /// Conditions for offering each tool, apart from an allowed folder.
    struct Offer {
        std::function<bool()> codex;
        std::function<bool()> claude;
        std::function<bool()> rename;
    };

    /// `scope` runs the background task; it belongs to the owner and is joined before this object is
    /// destroyed.
    AgentTools(AgentRunner& agenti, HistorieAgentu& historie, AgentReports& reports, Folders folders,
               TaskScope& scope)
        : agenti_(agenti),
          historie_(historie),
          reports_(reports),
          news_(reports, scope),
          folders_(std::move(folders)),
          scope_(scope) {}

    void addTo(ToolTable& table, const Offer& offer);

    /// Asks the agent to end if it works on this work item now. If the task is still being prepared, the
    /// request is kept and the task ends before its agent starts. False if there is no such task, or if its
    /// agent has already ended.
    bool zastavit(const Uuid& workItemID);

    /// The work item of the current task, from its acceptance until the phone has been told of its end.
    [[nodiscard]] std::optional<Uuid> currentTask() const;

  private:
    Task<ToolOutcome> runCodex(AgentRun run, ToolCall call);
    Task<ToolOutcome> runClaude(AgentRun run, ToolCall call);
    Task<ToolOutcome> spust(std::string nastroj, AgentRun run, ToolCall call);
    Task<ToolOutcome> zrus(NoArguments none, ToolCall call);
    void abandon();
    Task<ToolOutcome> renameTask(AgentRename rename, ToolCall call);
    [[nodiscard]] ToolOutcome noFolder() const;
    [[nodiscard]] std::optional<std::string> relace(const std::optional<Uuid>& workItemID,
                                                    const std::string& nastroj,
                                                    const std::string& slozka) const;
    Task<void> carryOut(AgentRunner::Assignment assignment, Uuid workItemID);
    [[nodiscard]] AgentRunner::Posluchac posluchac(const std::string& requestID, const Uuid& workItemID);
    void recordEnd(const Uuid& workItemID, Result<AgentRunner::Vysledek> vysledek);
    Task<void> announceTask(Uuid workItemID);

    struct AgentniUloha {
        Uuid workItemID;
        std::stop_source cancellation = {};
        bool hasEnded = false; ///< the end is recorded; the phone is still being told
        /// Runs when the call that began the task is abandoned.
        std::optional<std::stop_callback<std::function<void()>>> onAbandonment = {};
    };

    AgentRunner& agenti_;
    HistorieAgentu& historie_;
    AgentReports& reports_;
    AgentNews news_;
    Folders folders_;
    TaskScope& scope_;
    std::optional<AgentniUloha> agentniUloha_; ///< set while the background task exists
};

} // namespace morvex
