#pragma once

#include "platform/linux/OrphanWatch.h"
#include "platform/ports/ProcessLauncher.h"

namespace morvex {

/// Starts programs with posix_spawn. Safe from any thread.
class SpawnLauncher final : public ProcessLauncher {
  public:
    /// `watch` ends the started programs if this program ends abnormally; without it they live on.
    explicit SpawnLauncher(OrphanWatch* watch = nullptr) : watch_(watch) {}

    Result<std::unique_ptr<ChildProcess>> launch(const OutsideProgram& program,
                                                 ChildListener& listener) override;

  private:
    OrphanWatch* watch_;
};

} // namespace morvex
