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

/// Programs played by a test; nothing is started. Use on the test's executor.
class ScriptedPrograms final : public ProcessLauncher {
  public:
    struct Answer {
        std::string output = {};
        std::string errors = {};
        std::int32_t status = 0;
    };

    /// A child from the test's point of view; the test plays it by calling the listener.
    struct Child {
        ChildListener* listener = nullptr; ///< null after the child was destroyed
        std::vector<ChildSignal> signals;
        bool isAbandoned = false;
    };

    /// The automatic answer of a program, delivered in later jobs of the executor; without one the test plays
    /// the program itself.
    std::function<std::optional<Answer>(const OutsideProgram&)> answer = [](const OutsideProgram&) {
        return std::optional<Answer>{};
    };
    /// Binaries that cannot be started, with the error.
    std::map<std::string, Error> problems;

    std::vector<OutsideProgram> programs; ///< in the order of the launches, including failed ones
    std::vector<std::shared_ptr<Child>> children;

    Result<std::unique_ptr<ChildProcess>> launch(const OutsideProgram& program,
                                                 ChildListener& listener) override;
};

} // namespace morvex
