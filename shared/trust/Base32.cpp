#include "shared/trust/Base32.h"

#include <string_view>

namespace morvex::Base32 {

namespace {

constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZ234567";

} // namespace

void Encoder::add(std::uint8_t byte) {
    held_ = held_ << 8 | byte;
    heldBits_ += 8;
    while (heldBits_ >= 5) {
        heldBits_ -= 5;
        text_ += alphabet[held_ >> heldBits_ & 31];
    }
}

std::string Encoder::text() && {
    if (heldBits_ > 0) text_ += alphabet[held_ << (5 - heldBits_) & 31];
    return std::move(text_);
}

std::string encode(ByteView bytes) {
    Encoder encoder;
    for (auto byte : bytes) encoder.add(byte);
    return std::move(encoder).text();
}

} // namespace morvex::Base32
