#include "shared/trust/Revocation.h"

#include <gtest/gtest.h>

namespace morvex {

TEST(Revocation, SignsWholeSecondsTruncatedTowardZero) {
    using std::chrono::microseconds;
    auto signedAt = [](Date date) { return revocationSignedText({"P"}, {"T"}, {"B"}, date); };
    EXPECT_EQ(signedAt(dateFromSeconds(1795000000) + microseconds(999'999)), "revoke|P|T|B|1795000000");
    EXPECT_EQ(signedAt(dateFromSeconds(0) - microseconds(1)), "revoke|P|T|B|0");
}

} // namespace morvex
