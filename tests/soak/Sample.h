#pragma once

#include <cstddef>
#include <vector>

namespace morvex {

/// How the process stands after so many envelopes.
struct Sample {
    std::size_t envelopes = 0;
    double latency = 0;   ///< of a call, median since the sample before, in microseconds
    double processor = 0; ///< of all threads, by call, in microseconds
    double heap = 0;      ///< bytes that the program holds, in MiB
    double resident = 0;  ///< in MiB
    double descriptors = 0;
};

/// The middle of one figure in the given tenth of a run, 1 to 10; there are ten samples or more.
double middleOfTenth(const std::vector<Sample>& samples, std::size_t tenth, double Sample::* figure);

} // namespace morvex
