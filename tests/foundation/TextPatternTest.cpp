#include "foundation/TextPattern.h"

#include <gtest/gtest.h>

namespace morvex {
namespace {

TEST(TextPattern, IsFoundByCanonicalEquivalence) {
    struct Row {
        std::string_view part, text;
        bool isIn;
    };

    const Row rows[] = {
        {"", "", true},
        {"", "abc", true},
        {"b", "abc", true},
        {"abcd", "abc", false},
        {"u\u030a", "účtů", true},
        {"ů", "u\u0301ctu\u030a", true},
        {"u", "ů", false},
        {"ctu", "účtů", false},
        {"úč", "účtů", true},
        {"ů", "ucet", false},
        // The Kelvin sign is the letter K.
        {"\u212a", "10 K", true},
        {"K", "10 \u212a", true},
        {"a", "ab\xff", true},
        {"\ufffd", "b\xff", true},
    };
    for (const auto& row : rows) EXPECT_EQ(TextPattern(row.part).isIn(row.text), row.isIn) << row.part;
}

TEST(TextPattern, IsFoundInTheLowerCaseOfAText) {
    EXPECT_TRUE(TextPattern("faktura").isInLowerCaseOf("FAKTURA.pdf"));
    EXPECT_TRUE(TextPattern("účtů").isInLowerCaseOf("Přehled ÚČTŮ"));
    EXPECT_TRUE(TextPattern("k").isInLowerCaseOf("10 \u212a"));
    EXPECT_FALSE(TextPattern("FAKTURA").isInLowerCaseOf("FAKTURA.pdf"));
    EXPECT_FALSE(TextPattern("uctu").isInLowerCaseOf("Přehled ÚČTŮ"));
}

} // namespace
} // namespace morvex
