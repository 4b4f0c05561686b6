#pragma once

#include <string>
#include <vector>

namespace morvex {

/// A row of `terminal-gate-table.txt`.
struct TerminalRow {
    int line = 0;
    std::vector<std::string> command; ///< the program, then its arguments
    std::string verdict;              ///< the kind
    std::string detail;
};

/// All rows, with `@` in front of a word replaced by `root`.
std::vector<TerminalRow> readTerminalTable(const std::string& root);

} // namespace morvex
