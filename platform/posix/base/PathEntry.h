#pragma once

#include "shared/base/Error.h"

#include <string>

namespace morvex {

/// What is at a path, links not followed.
struct PathEntry {
    enum class Kind { missing, link, other };

    Kind kind = Kind::missing;
    std::string target{}; ///< of a link

    /// What cannot be looked at counts as missing: this process cannot open it either. So does a path with a
    /// NUL byte, which the system would cut there.
    static PathEntry at(const std::string& path);
};

/// Whether there is a folder at this absolute path, also through links. Fails with `SystemError`.
Result<bool> leadsToFolder(const std::string& path);

/// Whether there is a regular file at the path, also through links, that this process may run.
bool isExecutableFile(const std::string& path);

} // namespace morvex
