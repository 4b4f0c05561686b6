#pragma once

#include "platform/memory/ManualClock.h"
#include "platform/memory/ManualExecutor.h"
#include "platform/posix/JsonDefaults.h"
#include "tests/support/ImmediateDefaults.h"
#include "tests/support/TemporaryFolder.h"

#include <filesystem>

namespace morvex {

/// Settings whose disk works when the test lets it.
class SlowDefaults {
  public:
    /// One save, if one is asked for, and what it leads to.
    void write() {
        home.runUntilIdle();
        disk.runUntilIdle();
        home.runUntilIdle();
    }

    /// The next save and those behind it fail.
    void breakSaves() const {
        std::filesystem::remove(path);
        std::filesystem::create_directories(path);
    }

    void mendSaves() const { std::filesystem::remove(path); }

    /// Lets the time of the next try come.
    void retry() {
        clock.advance(JsonDefaults::retryDelay);
        write();
    }

    /// What the next start would find.
    [[nodiscard]] ImmediateDefaults kept() const { return ImmediateDefaults(folder.path()); }

    TemporaryFolder folder;
    std::filesystem::path path = folder.path() / "Morvex" / "defaults.json";
    ManualExecutor home;
    ManualExecutor disk;
    ManualClock clock;
    JsonDefaults defaults{folder.path(), {home, disk, clock}};
};

} // namespace morvex
