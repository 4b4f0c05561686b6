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

/// Tells the phone what an agent says while it runs. News are sent one after the other, so a slow link holds
/// at most one send and `mostWaiting` news, whatever the agent prints. If there are more, the oldest are
/// dropped; the update at the end of the task makes up for them. Main thread.
class AgentNews {
  public:
    static constexpr std::size_t mostWaiting = 100;

    /// `scope` runs the sending; it belongs to the owner and is joined before this object is destroyed. After
    /// its stop no send begins.
    AgentNews(AgentReports& reports, TaskScope& scope) : reports_(reports), scope_(scope) {}

    /// Sends a text under the id of its call, then the status that shows the text.
    void prubeh(std::string text, std::string requestID);
    void ukol(UkolAgenta ukol);

    /// Resumes when no news are waiting any more.
    Task<void> allSent();

  private:
    struct Prubeh {
        std::string text;
        std::string requestID;
    };

    using NewsItem = std::variant<Prubeh, UkolAgenta>;

    void add(NewsItem newsItem);
    Task<void> sendQueued();
    Task<void> sendQueued(Prubeh prubeh);
    Task<void> sendQueued(UkolAgenta ukol);

    AgentReports& reports_;
    TaskScope& scope_;
    std::deque<NewsItem> queue_;
    bool isSending_ = false;
    std::vector<std::shared_ptr<OneShot<bool>>> cekajici_;
};

} // namespace morvex
