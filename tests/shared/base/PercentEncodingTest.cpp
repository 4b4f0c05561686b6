#include "shared/base/PercentEncoding.h"

#include <gtest/gtest.h>

namespace morvex {
namespace {

TEST(PercentEncoding, KeepsUnreservedCharactersOnly) {
    EXPECT_EQ(percentEncoded("aZ09-._~"), "aZ09-._~");
    EXPECT_EQ(percentEncoded("a b/c?d&e=f#g%h+"), "a%20b%2Fc%3Fd%26e%3Df%23g%25h%2B");
    EXPECT_EQ(percentEncoded("Žď"), "%C5%BD%C4%8F");
    EXPECT_EQ(percentEncoded(std::string_view("\0\r\n\xff", 4)), "%00%0D%0A%FF");
    EXPECT_EQ(percentEncoded("/a b", "/"), "/a%20b");
}

} // namespace
} // namespace morvex
