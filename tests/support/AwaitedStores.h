#pragma once

#include "app/personal/PoznamkyStore.h"
#include "app/personal/SouhrnyStore.h"
#include "platform/memory/ManualClock.h"
#include "platform/memory/ManualExecutor.h"
#include "shared/base/Require.h"

#include <filesystem>
#include <optional>
#include <string>
#include <utility>

namespace morvex {

/// The executor of a store whose work runs on the test's own thread. It must be constructed before the store.
struct OwnExecutor {
    template <class T> T ended(Task<T> task) {
        auto result = executor.run(std::move(task));
        require(result.has_value(), "a store waits for something");
        return *std::move(result);
    }

    ManualExecutor executor;
};

/// A notes store whose every change is saved, or has failed, when the call returns.
class AwaitedNotes : private OwnExecutor, public PoznamkyStore {
  public:
    AwaitedNotes(const std::filesystem::path& applicationSupport, Clock& clock, Random& random)
        : PoznamkyStore(applicationSupport, {executor, executor, clock}, random) {}

    Result<MorvexNote> vytvorit(const std::string& title, const std::string& body) {
        return ended(PoznamkyStore::vytvorit(title, body));
    }

    Result<MorvexNote> upravit(const std::string& title, const std::optional<std::string>& newTitle,
                               const std::optional<std::string>& newBody) {
        return ended(PoznamkyStore::upravit(title, newTitle, newBody));
    }

    Result<MorvexNote> smazat(const std::string& title) { return ended(PoznamkyStore::smazat(title)); }

    bool prijmout(MorvexNote note) {
        auto taken = PoznamkyStore::prijmout(std::move(note));
        hurry();
        return ended(std::move(taken));
    }
};

/// The same for summaries.
class AwaitedSummaries : private OwnExecutor, public SouhrnyStore {
  public:
    explicit AwaitedSummaries(const std::filesystem::path& applicationSupport)
        : AwaitedSummaries(applicationSupport, std::make_unique<ManualClock>()) {}

    bool prijmout(MorvexSummary summary) {
        auto taken = SouhrnyStore::prijmout(std::move(summary));
        hurry();
        return ended(std::move(taken));
    }

  private:
    AwaitedSummaries(const std::filesystem::path& applicationSupport, std::unique_ptr<ManualClock> clock)
        : SouhrnyStore(applicationSupport, {executor, executor, *clock}), clock_(std::move(clock)) {}

    std::unique_ptr<ManualClock> clock_;
};

} // namespace morvex
