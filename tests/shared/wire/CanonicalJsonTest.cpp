#include "shared/wire/CanonicalJson.h"

#include <gtest/gtest.h>

namespace morvex {
namespace {

TEST(CanonicalJson, OrdersMembersAtEveryDepthAndDropsWhiteSpace) {
    EXPECT_EQ(canonicalJson(R"( { "b" : [ { "d":1, "c":2 } ], "a" : { "z":null, "y":"x y" } } )"),
              R"({"a":{"y":"x y","z":null},"b":[{"c":2,"d":1}]})");
}

TEST(CanonicalJson, KeepsTheOrderOfArraysAndLargeNumbers) {
    EXPECT_EQ(canonicalJson("[3,1,18446744073709551615,-9223372036854775808]"),
              "[3,1,18446744073709551615,-9223372036854775808]");
}

TEST(CanonicalJson, OrdersByBytesNotByLetters) {
    EXPECT_EQ(canonicalJson(R"({"á":1,"z":2,"Z":3})"), R"({"Z":3,"z":2,"á":1})");
}

TEST(CanonicalJson, LeavesWhatIsNoJson) {
    EXPECT_EQ(canonicalJson("{ no"), "{ no");
}

} // namespace
} // namespace morvex
