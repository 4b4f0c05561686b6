#pragma once

#include <array>
#include <csignal>
#include <cstddef>
#include <vector>

namespace morvex {

inline constexpr int standardInput = 0;
inline constexpr int standardOutput = 1;
inline constexpr int standardError = 2;

/// The signals that ask a program to end.
inline constexpr std::array endSignals{SIGINT, SIGTERM, SIGHUP};

/// Those of them that this process does not ignore. A program that was started by `nohup` ignores SIGHUP and
/// lives on when its terminal closes.
std::vector<int> heededEndSignals();

bool isTerminal(int descriptor);

/// A write to a reader that has gone fails instead of ending the program.
void surviveGoneReaders();

/// Whoever starts this program may ignore the end of children; then it would hear of none.
void hearOfChildren();

/// Keeps the signals that ask for the end from the calling thread from now on.
void blockEndSignals();

/// Lets this process have as many open files as the system allows it at most; that number.
std::size_t raiseFileLimit();

} // namespace morvex
