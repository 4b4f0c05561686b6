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
    /// Which processes of its own may outlive it.
    enum class Leaves {
        nothing,
        unlessStopped, ///< any, of a run that nobody stopped, or asked to end before
        daemons,       ///< those whose parents have ended, however it ends itself
    };
    enum class Inherits { environment, nothing };

    std::string what;
    OutsideProgram program;
    Ends ends = Ends::byItself;
    /// When it ends by itself; absent where that is left to chance.
    std::optional<std::int32_t> status = {};
    Leaves leaves = Leaves::nothing;
    /// What the processes that it leaves have of it.
    Inherits inherits = Inherits::environment;
};

/// Every kind; the programs that they need are laid into `folder`.
std::vector<DifficultChild> difficultChildren(const std::filesystem::path& folder);

} // namespace morvex
