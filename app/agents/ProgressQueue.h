#pragma once

#include "app/agents/AgentListener.h"
#include "app/agents/Bezici.h"
#include "foundation/Executor.h"

#include <cstddef>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace morvex {

/// Carries an agent's messages in order from the thread that reads its output to the main thread. Each job
/// that it posts there takes everything that waits, so whatever was added before the end of the output is
/// delivered before those who await that end resume. Of a text only the first 1,000 characters, at most 8,000
/// bytes, are passed on, so that it fits into every frame. If the main thread is more than 1 MiB behind, the
/// oldest progress is dropped. Kept alive by the line callback and by its own jobs.
class ProgressQueue : public std::enable_shared_from_this<ProgressQueue> {
  public:
    struct ProgressItem {
        std::optional<std::string> relace;
        std::optional<std::string> prubeh;
    };

    /// `bezici` gets the latest progress as long as it exists.
    ProgressQueue(Executor& main, AgentListener posluchac, std::weak_ptr<Bezici> bezici)
        : main_(main), posluchac_(std::move(posluchac)), bezici_(std::move(bezici)) {}

    /// From any thread.
    void add(ProgressItem progressItem);

    /// Delivers the message at once. Called on the main thread.
    void progressItem(ProgressItem progressItem) const;

  private:
    void handOver();
    void dropOldest();

    Executor& main_;
    const AgentListener posluchac_;
    const std::weak_ptr<Bezici> bezici_;
    std::mutex zamek_;
    std::deque<ProgressItem> queue_;
    std::size_t size_ = 0;
};

} // namespace morvex
