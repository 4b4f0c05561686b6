#pragma once

#include "relay/Line.h"
#include "relay/Origin.h"

#include <cstddef>
#include <map>
#include <unordered_map>

namespace morvex {

/// The memory held by the socket of each logged-in device, grouped by site. A socket counts until it is
/// destroyed, also while it closes. Owned by the switchboard.
class MemoryLedger {
  public:
    void enter(Line& line);
    void leave(Line& line);
    /// Asks the line how much it holds now. Does nothing for a line that has not entered.
    void weigh(Line& line);

    [[nodiscard]] std::size_t sum() const { return sum_; }

    /// The line that holds the most, within the site that holds the most. Takes linear time; at least one
    /// line must have entered.
    [[nodiscard]] Line& greediest() const;

  private:
    struct Site {
        std::size_t lines = 0;
        std::size_t held = 0;
    };

    struct Entry {
        std::map<Prefix, Site>::iterator site;
        std::size_t held = 0; ///< bytes at the last weighing
    };

    std::map<Prefix, Site> sites_; ///< only sites that have a line
    std::unordered_map<Line*, Entry> lines_;
    std::size_t sum_ = 0;
};

} // namespace morvex
