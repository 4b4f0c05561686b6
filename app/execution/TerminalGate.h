#pragma once

#include "app/execution/PovoleneSlozky.h"
#include "shared/base/Error.h"

#include <optional>
#include <string>
#include <vector>

/// The gates between an assistant's command and its start, in the order in which they are passed.
namespace morvex::TerminalGate {

/// The name of the allowed program that is meant: the last component of `program`, whatever stands before it.
/// The arguments are judged as words only. Fails with `TerminalChyba`.
Result<std::string> povolenyProgram(const std::string& program, const std::vector<std::string>& argumenty);

/// The working folder. Fails with `TerminalChyba`.
Result<std::string> pracovniSlozka(const std::optional<std::string>& slozka, const PovoleneSlozky& slozky);

/// Whether an argument looks like a path that may lead anywhere. Relative ones stay as they are, also with
/// `..` in them.
bool jeCesta(const std::string& argument);

/// Every argument that looks like a path lies in an allowed folder. May block on the disk; fails with
/// `SouboryChyba`.
Result<void> overCesty(const std::vector<std::string>& argumenty, const PovoleneSlozky& slozky);

} // namespace morvex::TerminalGate
