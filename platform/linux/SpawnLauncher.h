#pragma once

#include "platform/linux/OrphanWatch.h"
#include "platform/ports/ProcessLauncher.h"

namespace morvex {

/// Starts programs with posix_spawn. Safe from any thread.
class SpawnLauncher final : public ProcessLauncher {
  public:
    /// What it starts ends with `watch`, or lives on when there is none.
    explicit SpawnLauncher(OrphanWatch* watch = nullptr) : watch_(watch) {}

    Result<std::unique_ptr<ChildProcess>> launch(const OutsideProgram& program,
                                                 ChildListener& listener) override;

  private:
    OrphanWatch* watch_;
};

} // namespace morvex
