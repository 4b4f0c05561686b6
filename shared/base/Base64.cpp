#include "shared/base/Base64.h"

#include <array>

namespace morvex {
namespace {

constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::uint8_t noDigit = 0xff;

constexpr auto digitValues = [] {
    std::array<std::uint8_t, 256> values{};
    values.fill(noDigit);
    for (std::size_t digit = 0; digit < alphabet.size(); ++digit)
        values[static_cast<std::uint8_t>(alphabet[digit])] = static_cast<std::uint8_t>(digit);
    return values;
}();

/// Four digits as 24 bits, or more than 24 bits when one is outside the alphabet.
std::uint32_t quartetValue(std::string_view quartet) {
    std::uint32_t bits = 0;
    std::uint8_t seen = 0;
    for (const char digit : quartet) {
        const auto value = digitValues[static_cast<std::uint8_t>(digit)];
        seen |= value;
        bits = bits << 6 | (value & 0x3fu);
    }
    return seen > 0x3f ? 0xffffffffu : bits;
}

void appendQuartet(std::string& text, std::uint32_t bits) {
    for (int shift = 18; shift >= 0; shift -= 6) text += alphabet[bits >> shift & 0x3f];
}

} // namespace

std::string base64Encode(ByteView bytes) {
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    for (std::size_t index = 0; index < bytes.size(); index += 3) {
        const auto group = bytes.subspan(index, std::min<std::size_t>(3, bytes.size() - index));
        std::uint32_t bits = 0;
        for (std::size_t place = 0; place < 3; ++place)
            bits = bits << 8 | (place < group.size() ? group[place] : 0u);
        appendQuartet(text, bits);
        for (std::size_t place = group.size(); place < 3; ++place) text[text.size() - (3 - place)] = '=';
    }
    return text;
}

std::optional<Bytes> base64Decode(std::string_view text) {
    if (text.size() % 4 != 0) return std::nullopt;
    Bytes bytes;
    bytes.reserve(text.size() / 4 * 3);
    for (std::size_t index = 0; index < text.size(); index += 4) {
        std::array<char, 4> quartet{text[index], text[index + 1], text[index + 2], text[index + 3]};
        std::size_t padding = 0;
        if (index + 4 == text.size())
            for (; padding < 2 && quartet[3 - padding] == '='; ++padding) quartet[3 - padding] = 'A';

        const auto bits = quartetValue({quartet.data(), quartet.size()});
        const std::uint32_t bitsBeyondTheEnd = (1u << (8 * padding)) - 1;
        if (bits > 0xffffff || (bits & bitsBeyondTheEnd) != 0) return std::nullopt;
        for (std::size_t place = 0; place < 3 - padding; ++place)
            bytes.push_back(static_cast<std::uint8_t>(bits >> (16 - 8 * place)));
    }
    return bytes;
}

} // namespace morvex
