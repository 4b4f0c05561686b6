#pragma once

#include "tests/fault/LaidTree.h"

#include <optional>
#include <string>
#include <vector>

namespace morvex {

/// A tree, a path into it, and the expected result of each file tool.
struct PathLayout {
    std::string what;
    std::string tree; ///< in the format of `LaidTree`
    std::string asked;
    Answer read;
    Answer write;
    std::string made;                 ///< the file in the allowed folder that writing creates, if it succeeds
    std::optional<std::string> found; ///< all results of a search, joined by ", "; nothing if it is refused
    std::vector<std::string> allowed = {"home/Projects"};
    std::optional<std::string> folder = std::nullopt; ///< passed together with the path
};

/// Every layout with which the file tools are tested.
std::vector<PathLayout> pathLayouts();

} // namespace morvex
