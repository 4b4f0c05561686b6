#include "shared/trust/OutgoingCounter.h"

#include <gtest/gtest.h>

namespace morvex {

TEST(OutgoingCounter, CountsFromOne) {
    OutgoingCounter counter;
    EXPECT_EQ(counter.next(), 1u);
    EXPECT_EQ(counter.next(), 2u);
}

TEST(OutgoingCounterDeathTest, EndsTheProcessInsteadOfStartingAgain) {
    OutgoingCounter counter(std::numeric_limits<std::uint64_t>::max() - 1);
    EXPECT_EQ(counter.next(), std::numeric_limits<std::uint64_t>::max());
    EXPECT_DEATH(counter.next(), "the message counter has no next value");
}

} // namespace morvex
