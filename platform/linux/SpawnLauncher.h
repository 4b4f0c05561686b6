#pragma once

#include "platform/ports/ProcessLauncher.h"

namespace morvex {

/// Starts programs with posix_spawn. Safe from any thread.
class SpawnLauncher final : public ProcessLauncher {
  public:
    Result<std::unique_ptr<ChildProcess>> launch(const OutsideProgram& program,
                                                 ChildListener& listener) override;
};

} // namespace morvex
