#include "relay/FrameBuffer.h"

#include <gtest/gtest.h>

using namespace morvex;

namespace {

constexpr std::size_t step = 16 * 1024;

std::string pieceOf(std::size_t number) {
    return std::string(step, static_cast<char>('a' + number % 26));
}

} // namespace

TEST(FrameBuffer, GivesBackWhatCameAndHoldsNothingAfterwards) {
    for (const std::size_t count : {1U, 2U, 3U, 40U, 256U}) {
        FrameBuffer buffer;
        std::string all;
        for (std::size_t number = 0; number < count; ++number) {
            all += pieceOf(number);
            buffer.append(pieceOf(number));
        }
        EXPECT_EQ(buffer.size(), all.size());
        const auto taken = buffer.take();
        EXPECT_EQ(taken, all);
        EXPECT_EQ(taken.capacity(), all.size()) << count;
        EXPECT_EQ(buffer.size(), 0U);
        EXPECT_EQ(buffer.capacity(), 0U);
        EXPECT_EQ(buffer.take(), "");
    }
}

TEST(FrameBuffer, HoldsLittleMoreThanWhatCame) {
    FrameBuffer buffer;
    for (std::size_t number = 0; number < 256; ++number) {
        buffer.append(pieceOf(number));
        EXPECT_GE(buffer.capacity(), buffer.size());
        EXPECT_LE(buffer.capacity(), 2 * buffer.size());
        EXPECT_LE(buffer.capacity(), buffer.size() + FrameBuffer::longestPiece);
    }
    buffer.clear();
    EXPECT_EQ(buffer.capacity(), 0U);
}

TEST(FrameBuffer, TakesAFewBytesAtATime) {
    FrameBuffer buffer;
    std::string all;
    for (int number = 0; number < 1000; ++number) {
        buffer.append(std::to_string(number));
        all += std::to_string(number);
    }
    EXPECT_EQ(buffer.take(), all);
}
