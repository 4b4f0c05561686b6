#pragma once

#include "app/execution/AllowedFolders.h"
#include "shared/base/Error.h"

#include <optional>
#include <string>
#include <vector>

/// The checks between an assistant's command and its start, in the order in which they are made.
namespace morvex::TerminalGate {

/// The name of the allowed program: the last component of `program`, whatever precedes it. Arguments are
/// judged only as words. Fails with `TerminalChyba`.
Result<std::string> allowedProgram(const std::string& program, const std::vector<std::string>& argumenty);

/// The working folder. Fails with `TerminalChyba`.
Result<std::string> workingFolder(const std::optional<std::string>& slozka, const AllowedFolders& slozky);

/// Whether an argument looks like a path that may lead anywhere. Relative paths do not count, even with `..`
/// in them.
bool isPath(const std::string& argument);

/// Checks that every argument that looks like a path lies in an allowed folder. May block on the disk; fails
/// with `SouboryChyba`.
Result<void> checkPaths(const std::vector<std::string>& argumenty, const AllowedFolders& slozky);

} // namespace morvex::TerminalGate
