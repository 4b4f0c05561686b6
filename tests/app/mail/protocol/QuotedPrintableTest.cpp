#include "app/mail/protocol/QuotedPrintable.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace morvex {
namespace {

using namespace std::string_literals;

TEST(QuotedPrintable, GivesTheBytesAndKeepsTheRest) {
    const std::vector<std::pair<std::string, std::string>> rows{
        {"", ""},
        {"plain_text", "plain_text"},
        {"=C5=99=c5=99", "řř"},
        {"a=\nb=\r\nc", "abc"},
        {"a=", "a="},
        {"a=4", "a=4"},
        {"a=4x=4", "a=4x=4"},
        {"==41", "=A"},
        {"=3D41", "=41"},
        {"=00", "\0"s},
        {"= 41", "= 41"},
        {"a= \nb", "a= \nb"},
        {"=\r", "=\r"},
        {"x\ny", "x\ny"},
    };
    for (const auto& [text, bytes] : rows) EXPECT_EQ(quotedPrintableBytes(text), bytes) << text;
}

} // namespace
} // namespace morvex
