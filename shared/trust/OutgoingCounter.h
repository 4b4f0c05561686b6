#pragma once

#include "shared/base/Require.h"

#include <cstdint>
#include <limits>

namespace morvex {

/// Numbers the messages of one direction from 1 and never repeats a number, since the nonce is made from it.
class OutgoingCounter {
  public:
    explicit OutgoingCounter(std::uint64_t last = 0) : last_(last) {}

    /// Ends the process when the numbers run out.
    std::uint64_t next() {
        require(last_ < std::numeric_limits<std::uint64_t>::max(), "the message counter has no next value");
        return ++last_;
    }

  private:
    std::uint64_t last_;
};

} // namespace morvex
