#pragma once

#include "platform/linux/JsonDefaults.h"
#include "platform/memory/ImmediateExecutor.h"
#include "platform/memory/ManualClock.h"

#include <filesystem>
#include <string>
#include <utility>

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

    void setTogether(DefaultsValues values) override {
        JsonDefaults::setTogether(std::move(values));
        clock.advance(SaveQueue::pause);
    }

    void remove(const std::string& key) override {
        JsonDefaults::remove(key);
        clock.advance(SaveQueue::pause);
    }

    /// Lets the time of the next try come.
    void retry() { clock.advance(retryDelay); }
};

} // namespace morvex
