#pragma once

#include "foundation/Executor.h"
#include "platform/ports/ProcessLauncher.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace morvex {

/// Programs that a test plays instead of starting any. Lives on the test's executor.
class ScriptedPrograms final : public ProcessLauncher {
  public:
    struct Answer {
        std::string output = {};
        std::string errors = {};
        std::int32_t status = 0;
    };

    /// A child as the test sees it; the test plays it by calling the listener.
    struct Child {
        ChildListener* listener = nullptr; ///< null once the child was given up
        std::vector<ChildSignal> signals;
        bool isAbandoned = false;
    };

    /// What a program does on its own, in later jobs of the executor; without an answer the test plays it.
    std::function<std::optional<Answer>(const OutsideProgram&)> answer = [](const OutsideProgram&) {
        return std::optional<Answer>{};
    };
    /// Binaries that cannot be started, and why.
    std::map<std::string, Error> problems;

    std::vector<OutsideProgram> programs; ///< in the order of their launches, failed ones too
    std::vector<std::shared_ptr<Child>> children;

    Result<std::unique_ptr<ChildProcess>> launch(const OutsideProgram& program,
                                                 ChildListener& listener) override;
};

} // namespace morvex
