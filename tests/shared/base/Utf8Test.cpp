#include "shared/base/Utf8.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string>

namespace morvex {
namespace {

/// The grammar of RFC 3629, section 4, byte by byte.
bool followsTheGrammar(std::string_view text) {
    const auto at = [&](std::size_t index) {
        return index < text.size() ? static_cast<std::uint8_t>(text[index]) : std::uint8_t{0};
    };
    const auto isIn = [&](std::size_t index, int low, int high) {
        return at(index) >= low && at(index) <= high;
    };
    const auto isTail = [&](std::size_t index) { return isIn(index, 0x80, 0xbf); };
    for (std::size_t index = 0; index < text.size();) {
        const auto two = isIn(index, 0xc2, 0xdf) && isTail(index + 1);
        const auto three = isTail(index + 2) && ((at(index) == 0xe0 && isIn(index + 1, 0xa0, 0xbf)) ||
                                                 (isIn(index, 0xe1, 0xec) && isTail(index + 1)) ||
                                                 (at(index) == 0xed && isIn(index + 1, 0x80, 0x9f)) ||
                                                 (isIn(index, 0xee, 0xef) && isTail(index + 1)));
        const auto four = isTail(index + 2) && isTail(index + 3) &&
                          ((at(index) == 0xf0 && isIn(index + 1, 0x90, 0xbf)) ||
                           (isIn(index, 0xf1, 0xf3) && isTail(index + 1)) ||
                           (at(index) == 0xf4 && isIn(index + 1, 0x80, 0x8f)));
        const std::size_t length = at(index) < 0x80 ? 1 : two ? 2 : three ? 3 : four ? 4 : 0;
        if (length == 0) return false;
        index += length;
    }
    return true;
}

TEST(Utf8, AgreesWithTheGrammarOnEverySequenceOfThreeBytes) {
    for (unsigned value = 0; value < 1U << 24; ++value) {
        const char bytes[] = {static_cast<char>(value >> 16), static_cast<char>(value >> 8),
                              static_cast<char>(value)};
        const std::string_view text(bytes, sizeof bytes);
        ASSERT_EQ(isValidUtf8(text), followsTheGrammar(text)) << std::hex << value;
    }
}

TEST(Utf8, AgreesWithTheGrammarOnSequencesOfFourBytes) {
    constexpr std::uint8_t edges[] = {0x00, 0x7f, 0x80, 0x8f, 0x90, 0x9f, 0xa0, 0xbf, 0xc0, 0xc2,
                                      0xdf, 0xe0, 0xed, 0xef, 0xf0, 0xf1, 0xf3, 0xf4, 0xf5, 0xff};
    for (const auto first : edges)
        for (const auto second : edges)
            for (const auto third : edges)
                for (const auto fourth : edges) {
                    const std::string text{static_cast<char>(first), static_cast<char>(second),
                                           static_cast<char>(third), static_cast<char>(fourth)};
                    ASSERT_EQ(isValidUtf8(text), followsTheGrammar(text));
                }
}

TEST(Utf8, FindsOneWrongByteAtEveryPlaceOfALongText) {
    const std::string piece =
        "Žluťoučký kůň 😀, \u0800 a dlouhá řada obyčejných písmen bez ničeho zvláštního.";
    std::string text;
    while (text.size() < 300) text += piece;
    ASSERT_TRUE(isValidUtf8(text));
    for (std::size_t place = 0; place < text.size(); ++place)
        for (const auto wrong : {'\x80', '\xc3', '\xe0', '\xf0', '\xff', 'a'}) {
            auto changed = text;
            changed[place] = wrong;
            ASSERT_EQ(isValidUtf8(changed), followsTheGrammar(changed)) << place;
        }
}

TEST(Utf8, RefusesWhatEndsWithinACharacterAtEveryLength) {
    for (std::size_t before = 0; before < 200; ++before)
        for (const auto* cut : {"\xc3", "\xe2\x82", "\xe2", "\xf0\x9f\x98", "\xf0\x9f", "\xf0"}) {
            auto text = std::string(before, 'a') + cut;
            ASSERT_FALSE(isValidUtf8(text)) << before;
            // An ASCII block follows.
            ASSERT_FALSE(isValidUtf8(text + std::string(130, 'a'))) << before;
        }
}

TEST(Utf8, AcceptsAsciiAndTheEmptyText) {
    for (std::size_t length = 0; length < 300; ++length) ASSERT_TRUE(isValidUtf8(std::string(length, 'a')));
}

TEST(Utf8, AgreesWithTheGrammarOnRandomBytes) {
    std::mt19937 random{7};
    for (int round = 0; round < 100'000; ++round) {
        std::string text(random() % 150, 'a');
        for (auto changes = random() % 4; changes > 0 && !text.empty(); --changes)
            text[random() % text.size()] = static_cast<char>(random());
        ASSERT_EQ(isValidUtf8(text), followsTheGrammar(text));
    }
}

} // namespace
} // namespace morvex
