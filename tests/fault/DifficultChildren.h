#pragma once

#include "platform/ports/ProcessLauncher.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace morvex {

/// A program that is hard to start, to follow or to end.
struct DifficultChild {
    enum class Ends { byItself, whenStopped, neverBegins };
    /// Which of its own processes may outlive it.
    enum class Leaves {
        nothing,
        unlessStopped, ///< any, if the run was not stopped or if it was asked to end before
        daemons,       ///< those whose parents have ended, however the program itself ends
    };
    enum class Inherits { environment, nothing };

    std::string what;
    OutsideProgram program;
    Ends ends = Ends::byItself;
    /// The exit status if it ends by itself; absent if the status is random.
    std::optional<std::int32_t> status = {};
    Leaves leaves = Leaves::nothing;
    /// What the processes that it leaves inherit from it.
    Inherits inherits = Inherits::environment;
};

/// Every kind; the programs that they need are created in `folder`.
std::vector<DifficultChild> difficultChildren(const std::filesystem::path& folder);

} // namespace morvex
