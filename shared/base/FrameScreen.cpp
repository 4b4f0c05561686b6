#include "shared/base/FrameScreen.h"

#include <algorithm>
#include <string_view>

namespace morvex {

namespace {

constexpr std::uint8_t opcodeBits = 0x0f;
constexpr std::uint8_t closeOpcode = 0x08;
constexpr std::uint8_t maskBit = 0x80;
constexpr std::uint8_t highestBit = 0x80;
constexpr std::uint8_t twoBytesFollow = 126;
constexpr std::uint8_t eightBytesFollow = 127;
constexpr std::string_view endOfHead = "\r\n\r\n";

/// The first number above the close codes for private use.
constexpr unsigned beyondPrivateUse = 5000;

bool isForbidden(unsigned first, unsigned second) {
    return (first << 8 | second) >= beyondPrivateUse;
}

} // namespace

bool FrameScreen::pass(std::span<std::uint8_t> bytes) {
    while (!bytes.empty()) {
        if (part_ != Part::payload) {
            passByte(bytes.front());
            bytes = bytes.subspan(1);
            continue;
        }
        const auto here =
            bytes.first(static_cast<std::size_t>(std::min<std::uint64_t>(remaining_, bytes.size())));
        if (isClose_ && seen_ < 2 && !passCloseCode(here)) return false;
        seen_ += here.size();
        remaining_ -= here.size();
        if (remaining_ == 0) begin(Part::first);
        bytes = bytes.subspan(here.size());
    }
    return true;
}

void FrameScreen::passByte(std::uint8_t& byte) {
    switch (part_) {
    case Part::answer:
        return passAnswer(byte);
    case Part::first:
        isClose_ = (byte & opcodeBits) == closeOpcode;
        return begin(Part::length);
    case Part::length:
        return passLength(byte);
    case Part::longLength:
        return passLongLength(byte);
    case Part::key:
        return passKey(byte);
    case Part::payload:
        return;
    }
}

void FrameScreen::passAnswer(std::uint8_t byte) {
    const auto is = [byte](char wanted) { return byte == static_cast<std::uint8_t>(wanted); };
    if (is(endOfHead[seen_]))
        ++seen_;
    else
        seen_ = is(endOfHead.front()) ? 1 : 0;
    if (seen_ == endOfHead.size()) begin(Part::first);
}

void FrameScreen::passLength(std::uint8_t byte) {
    const auto length = static_cast<std::uint8_t>(byte & ~maskBit);
    isMasked_ = (byte & maskBit) != 0;
    isTooLong_ = false;
    lengthBytes_ = length == twoBytesFollow ? 2 : length == eightBytesFollow ? 8 : 0;
    remaining_ = lengthBytes_ > 0 ? 0 : length;
    if (lengthBytes_ > 0)
        begin(Part::longLength);
    else
        lengthIsKnown();
}

void FrameScreen::passLongLength(std::uint8_t& byte) {
    if (seen_ == 0 && lengthBytes_ == 8 && (byte & highestBit)) isTooLong_ = true;
    if (isTooLong_) byte = 0;
    remaining_ = remaining_ << 8 | byte;
    if (++seen_ == lengthBytes_) lengthIsKnown();
}

void FrameScreen::lengthIsKnown() {
    key_ = {};
    if (isMasked_)
        begin(Part::key);
    else
        begin(remaining_ > 0 ? Part::payload : Part::first);
}

void FrameScreen::passKey(std::uint8_t byte) {
    key_[seen_++] = byte;
    if (seen_ == key_.size()) begin(remaining_ > 0 ? Part::payload : Part::first);
}

bool FrameScreen::passCloseCode(std::span<std::uint8_t> payload) {
    const auto plain = [&](std::size_t place) -> std::uint8_t {
        return payload[place - seen_] ^ key_[place];
    };
    if (seen_ == 1) return !isForbidden(firstOfCode_, plain(1));
    firstOfCode_ = plain(0);
    if (isForbidden(firstOfCode_, payload.size() > 1 ? plain(1) : 0)) {
        firstOfCode_ = 0;
        payload[0] = key_[0];
    }
    return true;
}

void FrameScreen::begin(Part part) {
    part_ = part;
    seen_ = 0;
}

} // namespace morvex
