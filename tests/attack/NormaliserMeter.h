#pragma once

#include <cstddef>

namespace morvex {

/// What this program has given to the text library to decompose, on all its threads. The program puts a
/// normaliser of its own in the place of the library's (`Normalizer2::getNFDInstance`), which counts and then
/// has the library do the work, unless that would take hours.
class NormaliserMeter {
  public:
    /// Begins to count anew.
    NormaliserMeter();

    [[nodiscard]] std::size_t characters() const;
    /// Marks that some other mark of the same letter may have to pass when they are sorted.
    [[nodiscard]] std::size_t steps() const;
    /// The most marks of one letter.
    [[nodiscard]] std::size_t longestRun() const;
};

} // namespace morvex
