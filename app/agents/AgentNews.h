#pragma once

#include "app/agents/AgentReports.h"
#include "foundation/OneShot.h"
#include "foundation/TaskScope.h"

#include <cstddef>
#include <deque>
#include <memory>
#include <string>
#include <variant>
#include <vector>

namespace morvex {

/// Tells the phone what an agent says while it runs: one thing after the other, so that a link that takes
/// nothing holds one send and `mostWaiting` news, whatever the agent prints. Beyond those the oldest are
/// dropped; the end of the task makes up for them. Main thread.
class AgentNews {
  public:
    static constexpr std::size_t mostWaiting = 100;

    /// `scope` runs the sending; it belongs to the owner and is joined before this object goes. Nothing is
    /// begun after its stop.
    AgentNews(AgentReports& hlaseni, TaskScope& scope) : hlaseni_(hlaseni), scope_(scope) {}

    /// A text under the id of its call, with the status that shows it.
    void prubeh(std::string text, std::string requestID);
    void ukol(UkolAgenta ukol);

    /// Resumes when nothing waits any more.
    Task<void> odeslano();

  private:
    struct Prubeh {
        std::string text;
        std::string requestID;
    };

    using Novinka = std::variant<Prubeh, UkolAgenta>;

    void pridej(Novinka novinka);
    Task<void> posli();
    Task<void> posli(Prubeh prubeh);
    Task<void> posli(UkolAgenta ukol);

    AgentReports& hlaseni_;
    TaskScope& scope_;
    std::deque<Novinka> fronta_;
    bool posila_ = false;
    std::vector<std::shared_ptr<OneShot<bool>>> cekajici_;
};

} // namespace morvex
