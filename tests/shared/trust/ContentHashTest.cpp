#include "shared/trust/ContentHash.h"

#include <gtest/gtest.h>

namespace morvex {

TEST(ContentHash, IsTheFirstEightBytesOfTheDigestInLowerCaseHex) {
    EXPECT_EQ(contentHash(""), "e3b0c44298fc1c14");
    EXPECT_EQ(contentHash("abc"), "ba7816bf8f01cfea");
}

} // namespace morvex
