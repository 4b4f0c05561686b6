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

/// Looks after the file of the pairs beside the relay's thread, in small steps and with a store of its own:
/// writes down which pairs are in use, forgets those whose end is over, and gives unused pages back. A
/// failure is a line of the log; the next round tries again. Order: `create`, then `step` on one thread or
/// `start`.
class StoreUpkeep {
  public:
    static Result<std::unique_ptr<StoreUpkeep>> create(const std::filesystem::path& file, RelayLog log);

    StoreUpkeep(const StoreUpkeep&) = delete;
    StoreUpkeep& operator=(const StoreUpkeep&) = delete;
    /// Ends the thread, also in the midst of its work, and writes down what was used last.
    ~StoreUpkeep();

    /// Steps on a thread of its own from now on.
    void start();
    /// A device of the pair has logged in, or is connected. From any thread. A pair that there is no room to
    /// remember is left out until its next use.
    void used(const PairID& pair);
    /// One small step. True when there is more to do.
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
