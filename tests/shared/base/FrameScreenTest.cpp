#include "shared/base/FrameScreen.h"

#include "shared/base/Bytes.h"
#include "tests/support/RawFrames.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace morvex {

namespace {

using test::bytes;
using test::closeFrame;
using test::masked;

/// What is left of the bytes when they come in pieces that end there; nothing when they are cut.
std::optional<std::string> passed(std::string given, std::size_t firstPiece,
                                  FrameScreen::Start start = FrameScreen::Start::frames) {
    FrameScreen screen{start};
    auto* data = reinterpret_cast<std::uint8_t*>(given.data());
    if (!screen.pass({data, firstPiece})) return std::nullopt;
    if (!screen.pass({data + firstPiece, given.size() - firstPiece})) return std::nullopt;
    return given;
}

std::string passedAtOnce(const std::string& given) {
    return passed(given, given.size()).value();
}

std::string passedByteByByte(std::string given) {
    FrameScreen screen{FrameScreen::Start::frames};
    for (auto& byte : given) EXPECT_TRUE(screen.pass({reinterpret_cast<std::uint8_t*>(&byte), 1}));
    return given;
}

} // namespace

TEST(FrameScreen, LeavesGoodFramesAsTheyAre) {
    std::string all;
    for (const auto& frame : {bytes("\x81\x05hello"), bytes("\x82\x7e\x00\x7e") + std::string(126, '\x88'),
                              bytes("\x82\x7f\0\0\0\0\0\x01\0\0") + std::string(65536, '\x88'),
                              bytes("\x89\x00"), bytes("\x8a\x02hi"), bytes("\x01\x01x\x80\x01y"),
                              bytes("\x88\x00"), closeFrame(1000), closeFrame(4999, "bye")}) {
        all += frame;
        EXPECT_EQ(passedAtOnce(frame), frame);
    }
    EXPECT_EQ(passedAtOnce(all), all);
    EXPECT_EQ(passedByteByByte(all), all);
}

TEST(FrameScreen, LeavesGoodFramesOfAClientAsTheyAre) {
    for (const auto code : test::closeCodes()) {
        const auto frames =
            masked(bytes("\x81\x05hello")) + masked(bytes("\x89\x00")) + masked(closeFrame(code, "bye"));
        EXPECT_EQ(passedAtOnce(frames), frames) << code;
        EXPECT_EQ(passedByteByByte(frames), frames) << code;
    }
}

TEST(FrameScreen, SpoilsALengthOfTwoToThe63OrMoreHoweverItIsSplit) {
    for (const auto& length : {bytes("\x80\0\0\0\0\0\0\0"), bytes("\xff\xff\xff\xff\xff\xff\xff\xff")}) {
        const auto frame = bytes("\x89\x00\x82\x7f") + length;
        for (std::size_t split = 0; split <= frame.size(); ++split)
            EXPECT_EQ(passed(frame, split), bytes("\x89\x00\x82\x7f") + std::string(8, '\0')) << split;
    }
    const auto largest = bytes("\x82\x7f\x7f\xff\xff\xff\xff\xff\xff\xff");
    EXPECT_EQ(passedAtOnce(largest), largest);
}

TEST(FrameScreen, SpoilsAForbiddenCloseCodeOrCutsWhereItIsSplit) {
    for (const unsigned code : {5000U, 5119U, 5120U, 65535U}) {
        const auto plain = closeFrame(code, "bye");
        for (const auto& frame : {plain, masked(plain)}) {
            const auto codeAt = frame == plain ? 2U : 6U;
            const bool isKnownByItsFirstByte = code >= 5120;
            for (std::size_t split = 0; split <= frame.size(); ++split) {
                const auto left = passed(frame, split);
                const bool isCut = split == codeAt + 1 && !isKnownByItsFirstByte;
                ASSERT_EQ(left.has_value(), !isCut) << code << " split at " << split;
                if (isCut) continue;
                EXPECT_EQ(left->substr(0, codeAt) + left->substr(codeAt + 1),
                          frame.substr(0, codeAt) + frame.substr(codeAt + 1));
                const auto key = frame == plain ? '\0' : frame[2];
                EXPECT_EQ((*left)[codeAt] ^ key, 0) << "now it is below 256";
            }
        }
    }
}

TEST(FrameScreen, LooksAtNoCodeInACloseOfOneByte) {
    EXPECT_EQ(passedAtOnce(bytes("\x88\x01\x13\x89\xff")), bytes("\x88\x01\x13\x89\xff"));
}

TEST(FrameScreen, PassesTheHeadOfAnAnswerUnseen) {
    const std::string head = "HTTP/1.1 101 Switching Protocols\r\nX: \x88\x02\xff\xff\r\r\n\r\n";
    const auto frames = head + closeFrame(65535);
    for (std::size_t split = 0; split <= frames.size(); ++split) {
        const auto left = passed(frames, split, FrameScreen::Start::answer).value();
        EXPECT_EQ(left.substr(0, head.size()), head);
        EXPECT_EQ(left.substr(head.size()), bytes("\x88\x02\x00\xff"));
    }
}

} // namespace morvex
