#pragma once

#include "tests/soak/Sample.h"
#include "tests/support/ConnectedPair.h"

#include <cstddef>
#include <vector>

namespace morvex {

/// A phone that calls the companion through a relay, again and again, while the connection of one end after
/// the other is cut and the time runs ahead. Used once.
class SoakRun {
  public:
    struct Plan {
        std::size_t envelopes = 0; ///< calls and results; hellos and statuses come on top
        std::size_t reconnects = 0;
    };

    explicit SoakRun(Plan plan) : plan_(plan) {}

    /// A sample a hundredth of the way each, or at every reconnection. Prints each tenth.
    const std::vector<Sample>& run();

    [[nodiscard]] std::size_t lostCalls() const { return lostCalls_; }

    /// How far the time was moved.
    [[nodiscard]] std::chrono::seconds passed() const { return passed_; }

  private:
    void callSome(std::size_t calls);
    void reconnect(std::size_t number);
    void takeSample();

    Plan plan_;
    ConnectedPair pair_;
    std::vector<Sample> samples_;
    std::vector<double> latencies_; ///< since the last sample
    double processorThen_ = 0;
    std::size_t envelopes_ = 0;
    std::size_t lostCalls_ = 0;
    std::chrono::seconds passed_{0};
};

} // namespace morvex
