#pragma once

#include "relay/Line.h"
#include "relay/Origin.h"

#include <cstddef>
#include <map>
#include <unordered_map>

namespace morvex {

/// What each socket of a device that has logged in holds in memory, by the site that it comes from. A socket
/// counts until it is gone, also while it closes. Owned by the switchboard.
class MemoryLedger {
  public:
    void enter(Line& line);
    void leave(Line& line);
    /// Asks the line what it holds now. Nothing for one that has not entered.
    void weigh(Line& line);

    [[nodiscard]] std::size_t sum() const { return sum_; }

    /// Of the site that holds the most, the line that holds the most. Looks at all of them; at least one has
    /// entered.
    [[nodiscard]] Line& greediest() const;

  private:
    struct Site {
        std::size_t lines = 0;
        std::size_t held = 0;
    };

    struct Entry {
        std::map<Prefix, Site>::iterator site;
        std::size_t held = 0; ///< when it was weighed
    };

    std::map<Prefix, Site> sites_; ///< those with a line
    std::unordered_map<Line*, Entry> lines_;
    std::size_t sum_ = 0;
};

} // namespace morvex
