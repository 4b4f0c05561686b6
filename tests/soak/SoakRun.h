#pragma once

#include "bench/PlainCall.h"
#include "tests/soak/Sample.h"
#include "tests/support/ConnectedPair.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace morvex {

/// A phone that calls the companion through a relay, again and again, while the connection of one end after
/// the other is cut, the relay is started anew now and then, and the time runs ahead. Most calls are
/// `mac.status`; between two cuts there are also one of a file of 256 KiB, one that changes a note and one
/// that searches notes. Used once.
class SoakRun {
  public:
    struct Plan {
        std::size_t envelopes = 0; ///< calls and results; hellos and statuses come on top
        std::size_t reconnects = 0;
    };

    explicit SoakRun(Plan plan) : plan_(plan) {}

    /// Of each sample.
    [[nodiscard]] std::size_t echoes() const { return echoesOfSample_; }

    [[nodiscard]] std::size_t relayRestarts() const { return relayRestarts_; }

    /// A sample a hundredth of the way each, or at every reconnection. Prints each tenth.
    const std::vector<Sample>& run();

    [[nodiscard]] std::size_t lostCalls() const { return lostCalls_; }

    /// How far the time was moved.
    [[nodiscard]] std::chrono::seconds passed() const { return passed_; }

  private:
    void prepare();
    void callSome(std::size_t calls);
    MacPayload::ToolResult call(const char* tool, const std::string& argumentsJSON);
    void measure();
    void reconnect(std::size_t number);
    void takeSample();

    Plan plan_;
    ConnectedPair pair_;
    std::vector<Sample> samples_;
    std::optional<PlainCall> plain_;
    std::vector<double> latencies_; ///< since the last sample
    std::vector<double> echoes_;    ///< likewise
    std::size_t echoesOfSample_ = 0;
    std::size_t callsOfSample_ = 0;
    std::size_t relayRestarts_ = 0;
    double processorThen_ = 0;
    std::size_t envelopes_ = 0;
    std::size_t lostCalls_ = 0;
    std::chrono::seconds passed_{0};
};

} // namespace morvex
