#include "shared/trust/Base32.h"

#include <gtest/gtest.h>

#include <list>

namespace morvex {

// RFC 4648, section 10, without the padding, and bytes of ones.
TEST(Base32, WritesTheSameTextFromABufferAndFromAnySequence) {
    struct {
        Bytes bytes;
        const char* text;
    } table[] = {
        {{}, ""},
        {toBytes("f"), "MY"},
        {toBytes("fo"), "MZXQ"},
        {toBytes("foo"), "MZXW6"},
        {toBytes("foob"), "MZXW6YQ"},
        {toBytes("fooba"), "MZXW6YTB"},
        {toBytes("foobar"), "MZXW6YTBOI"},
        {{0xff}, "74"},
        {{0xff, 0xff}, "777Q"},
    };

    for (auto& row : table) {
        EXPECT_EQ(Base32::encode(ByteView(row.bytes)), row.text);
        EXPECT_EQ(Base32::encode(std::list(row.bytes.begin(), row.bytes.end())), row.text);
    }
}

TEST(Base32, WritesSixteenBytesAsTwentySixCharacters) {
    EXPECT_EQ(Base32::encode(Bytes(16, 0xff)), "77777777777777777777777774");
}

} // namespace morvex
