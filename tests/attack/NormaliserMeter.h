#pragma once

#include <cstddef>

namespace morvex {

/// Counts what this program passes to the text library for decomposition, on all threads. The program
/// replaces the library's normaliser (`Normalizer2::getNFDInstance`) by its own, which counts and then lets
/// the library do the work, unless that would take hours.
class NormaliserMeter {
  public:
    /// Resets the counts.
    NormaliserMeter();

    [[nodiscard]] std::size_t characters() const;
    /// Marks that another mark of the same letter may have to pass during sorting.
    [[nodiscard]] std::size_t steps() const;
    /// The largest number of marks of one letter.
    [[nodiscard]] std::size_t longestRun() const;
};

} // namespace morvex
