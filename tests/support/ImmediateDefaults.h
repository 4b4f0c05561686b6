#pragma once

#include "platform/memory/ImmediateExecutor.h"
#include "platform/memory/ManualClock.h"
#include "platform/posix/JsonDefaults.h"

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace morvex {

/// What settings save with; made before them.
struct ImmediateSaving {
    ImmediateExecutor executor;
    ManualClock clock;
};

/// The settings of a file, each change of which is saved, or has failed, when the call returns.
class ImmediateDefaults : private ImmediateSaving, public JsonDefaults {
  public:
    explicit ImmediateDefaults(const std::filesystem::path& configHome)
        : JsonDefaults(configHome, {executor, executor, clock}) {}

    void changeTogether(DefaultsValues values, const std::vector<std::string>& removed) override {
        JsonDefaults::changeTogether(std::move(values), removed);
        clock.advance(SaveQueue::pause);
    }

    /// Lets the time of the next try come.
    void retry() { clock.advance(retryDelay); }
};

} // namespace morvex
