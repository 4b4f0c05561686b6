#pragma once

#include "platform/memory/ImmediateExecutor.h"
#include "platform/memory/ManualClock.h"
#include "platform/posix/JsonDefaults.h"

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace morvex {

/// The executors and the clock for saving; constructed before the settings.
struct ImmediateSaving {
    ImmediateExecutor executor;
    ManualClock clock;
};

/// Settings in a file; each change is saved, or has failed, when the call returns.
class ImmediateDefaults : private ImmediateSaving, public JsonDefaults {
  public:
    explicit ImmediateDefaults(const std::filesystem::path& configHome)
        : JsonDefaults(configHome, {executor, executor, clock}) {}

    void changeTogether(DefaultsValues values, const std::vector<std::string>& removed) override {
        JsonDefaults::changeTogether(std::move(values), removed);
        clock.advance(SaveQueue::pause);
    }

    /// Advances the time to the next retry.
    void retry() { clock.advance(retryDelay); }
};

} // namespace morvex
