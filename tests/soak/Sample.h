#pragma once

#include <cstddef>
#include <vector>

namespace morvex {

/// How the process stands after so many envelopes.
struct Sample {
    std::size_t envelopes = 0;
    double latency = 0; ///< of a status call, median since the sample before, in microseconds
    double echo = 0;    ///< of frames of the same size over the same two hops, taken in turns with the calls
    double ratio = 0;   ///< of these two
    double processor = 0; ///< of all threads, by call, in microseconds
    double heap = 0;      ///< bytes that the program holds, in MiB
    double resident = 0;  ///< in MiB
    double descriptors = 0;
};

/// The middle of one figure in the given tenth of a run, 1 to 9, and the next; there are ten samples or more.
double middleOfTwoTenths(const std::vector<Sample>& samples, std::size_t tenth, double Sample::* figure);

/// By how much a figure grows with each envelope after the first tenth: the middle of the slopes between all
/// pairs of samples, which a few odd ones do not move.
double slopeAfterWarmUp(const std::vector<Sample>& samples, double Sample::* figure);

} // namespace morvex
