#include "shared/wire/ProtocolVersion.h"

#include "shared/wire/TalkSpanError.h"

#include <gtest/gtest.h>

namespace morvex {
namespace {

TEST(ProtocolVersion, IsCurrentlyOneFour) {
    EXPECT_EQ(ProtocolVersion::current, (ProtocolVersion{1, 4}));
    EXPECT_EQ(ProtocolVersion::current.text(), "1.4");
}

TEST(ProtocolVersion, ReadsTwoIntegersAndDropsEmptyPieces) {
    for (const auto& [text, version] : {std::pair{"1.4", ProtocolVersion{1, 4}},
                                        {"1..4", {1, 4}},
                                        {".1.4.", {1, 4}},
                                        {"01.004", {1, 4}},
                                        {"-1.+4", {-1, 4}},
                                        {"9223372036854775807.0", {9223372036854775807, 0}}})
        EXPECT_EQ(ProtocolVersion::parse(text).value(), version) << text;
}

TEST(ProtocolVersion, NamesTheTextThatIsNoVersion) {
    for (const auto* text : {"1.4.0", "1", "x.y", "", ".", "1.", "1,4", "1.4 ", " 1.4", "1.0x4", "1.+-4",
                             "1.-", "1.+", "9223372036854775808.0", "1.4.5.6"}) {
        const auto read = ProtocolVersion::parse(text);
        ASSERT_FALSE(read) << text;
        EXPECT_EQ(*read.error().as<TalkSpanError>(),
                  (TalkSpanError{TalkSpanError::ProtocolMismatch{"1.4", text}}));
    }
}

TEST(ProtocolVersion, IsCompatibleWithinOneMajorNumber) {
    EXPECT_TRUE(ProtocolVersion::current.isCompatible({1, 0}));
    EXPECT_TRUE(ProtocolVersion::current.isCompatible({1, 99}));
    EXPECT_FALSE(ProtocolVersion::current.isCompatible({2, 4}));
    EXPECT_FALSE(ProtocolVersion::current.isCompatible({0, 4}));
}

} // namespace
} // namespace morvex
