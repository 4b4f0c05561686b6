#pragma once

#include "relay/PairStore.h"
#include "relay/RelayLog.h"

#include <condition_variable>
#include <cstddef>
#include <memory>
#include <mutex>
#include <thread>
#include <unordered_set>
#include <vector>

namespace morvex {

/// Maintains the file of the pairs outside the relay's thread, in small steps and with its own store: records
/// which pairs are in use, forgets those whose end has passed, and releases unused pages. A failure is
/// logged; the next round tries again. Order of calls: `create`, then `step` on one thread, or `start`.
class StoreUpkeep {
  public:
    static Result<std::unique_ptr<StoreUpkeep>> create(const std::filesystem::path& file, RelayLog log);

    StoreUpkeep(const StoreUpkeep&) = delete;
    StoreUpkeep& operator=(const StoreUpkeep&) = delete;
    /// Ends the thread, interrupting its work, and records the latest used pairs.
    ~StoreUpkeep();

    /// From now on steps run on a separate thread.
    void start();
    /// A device of the pair has logged in or is connected. From any thread. If too many pairs are already
    /// waiting, the pair is skipped until its next use.
    void used(const PairID& pair);
    /// Performs one small step. Returns true when there is more to do.
    bool step(Date now);

  private:
    static constexpr std::size_t maxUsed = 65'536;

    StoreUpkeep(PairStore store, RelayLog log) : store_(std::move(store)), log_(std::move(log)) {}

    void run();
    void keepUsed(Date now);
    std::vector<PairID> takeUsed();
    bool succeeded(const Result<bool>& done, std::string_view what);
    void complain(std::string_view what, const Error& error);
    bool isEnding();

    PairStore store_;
    RelayLog log_;
    std::mutex mutex_;
    std::condition_variable news_;
    std::unordered_set<PairID> used_;
    bool ends_ = false;
    std::thread thread_;
};

} // namespace morvex
