#pragma once

#include "platform/memory/ManualClock.h"
#include "platform/memory/ManualExecutor.h"
#include "platform/posix/JsonDefaults.h"
#include "tests/support/ImmediateDefaults.h"
#include "tests/support/TemporaryFolder.h"

#include <filesystem>

namespace morvex {

/// Settings whose disk works only when the test runs it.
class SlowDefaults {
  public:
    /// Runs one save, if one was requested, and what follows from it.
    void write() {
        home.runUntilIdle();
        disk.runUntilIdle();
        home.runUntilIdle();
    }

    /// Makes the following saves fail.
    void breakSaves() const {
        std::filesystem::remove(path);
        std::filesystem::create_directories(path);
    }

    void mendSaves() const { std::filesystem::remove(path); }

    /// Advances the time to the next retry.
    void retry() {
        clock.advance(JsonDefaults::retryDelay);
        write();
    }

    /// The settings as the next start would find them.
    [[nodiscard]] ImmediateDefaults kept() const { return ImmediateDefaults(folder.path()); }

    TemporaryFolder folder;
    std::filesystem::path path = folder.path() / "Morvex" / "defaults.json";
    ManualExecutor home;
    ManualExecutor disk;
    ManualClock clock;
    JsonDefaults defaults{folder.path(), {home, disk, clock}};
};

} // namespace morvex
