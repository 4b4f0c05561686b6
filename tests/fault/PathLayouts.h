#pragma once

#include "tests/fault/LaidTree.h"

#include <optional>
#include <string>
#include <vector>

namespace morvex {

/// A tree, a path into it, and what each file tool is to make of it.
struct PathLayout {
    std::string what;
    std::string tree; ///< as `LaidTree` reads it
    std::string asked;
    Answer read;
    Answer write;
    std::string made;                 ///< the file in the allowed folder that writing makes, if it is done
    std::optional<std::string> found; ///< all that a search finds, joined by ", "; nothing when it is refused
    std::vector<std::string> allowed = {"home/Projects"};
    std::optional<std::string> folder = std::nullopt; ///< told beside the path
};

/// Every layout that the file tools are held to.
std::vector<PathLayout> pathLayouts();

} // namespace morvex
