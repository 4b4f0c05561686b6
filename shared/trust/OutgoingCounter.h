#pragma once

#include "shared/base/Require.h"

#include <cstdint>
#include <limits>

namespace morvex {

/// Numbers the messages of one direction from 1, never twice the same: the nonce is made of it.
class OutgoingCounter {
  public:
    explicit OutgoingCounter(std::uint64_t last = 0) : last_(last) {}

    /// Running out of numbers ends the process.
    std::uint64_t next() {
        vyzaduj(last_ < std::numeric_limits<std::uint64_t>::max(), "the message counter has no next value");
        return ++last_;
    }

  private:
    std::uint64_t last_;
};

} // namespace morvex
