#include "foundation/Printable.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace morvex {
namespace {

TEST(Printable, TakesOutWhatCouldCommandATerminal) {
    const std::vector<std::pair<std::string, std::string>> rows{
        {"příliš žluťoučký 🐎", "příliš žluťoučký 🐎"},
        {"a\tb\nc", "a\tb\nc"},
        {"a\r\nb", "a\nb"},
        {"a\rb", "a\uFFFDb"},
        {"\x1b[2J", "\uFFFD[2J"},
        {"\x7f", "\uFFFD"},
        {"\u009b"
         "31m",
         "\uFFFD31m"},
        {"\u00a0", "\u00a0"},
        {"a\u202eb", "a\uFFFDb"},
        {"a\u061cb", "a\uFFFDb"},
        {"a\u2028b", "a\uFFFDb"},
        {"a\u2029b", "a\uFFFDb"},
        {"a\u2066b", "a\uFFFDb"},
        {"a\u2013b", "a\u2013b"},
        {"\xff", "\uFFFD"},
        {"\xe2\x80", "\uFFFD"},
        {"", ""},
    };
    for (const auto& [given, shown] : rows) EXPECT_EQ(printable(given), shown);
}

TEST(Printable, ALineStaysOne) {
    EXPECT_EQ(printableLine("a\r\nČíslo k porovnání: 123 456\x1b[A\n"),
              "a Číslo k porovnání: 123 456\uFFFD[A ");
    EXPECT_EQ(printableLine("a\tb"), "a\tb");
}

} // namespace
} // namespace morvex
