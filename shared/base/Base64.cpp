#include "shared/base/Base64.h"

#include <algorithm>
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

} // namespace

std::string base64Encode(ByteView bytes) {
    std::string text((bytes.size() + 2) / 3 * 4, '=');
    auto out = text.begin();
    for (std::size_t index = 0; index < bytes.size(); index += 3) {
        const auto count = std::min<std::size_t>(3, bytes.size() - index);
        std::uint32_t bits = 0;
        for (std::size_t place = 0; place < 3; ++place)
            bits = bits << 8 | (place < count ? bytes[index + place] : 0u);
        for (std::size_t digit = 0; digit < count + 1; ++digit)
            *out++ = alphabet[bits >> (18 - 6 * digit) & 0x3f];
    }
    return text;
}

std::optional<Bytes> base64Decode(std::string_view text) {
    if (text.size() % 4 != 0) return std::nullopt;
    const std::size_t padding = text.ends_with("==") ? 2 : text.ends_with('=') ? 1 : 0;
    Bytes bytes(text.size() / 4 * 3 - padding);
    auto out = bytes.begin();
    for (std::size_t index = 0; index < text.size(); index += 4) {
        std::array quartet{text[index], text[index + 1], text[index + 2], text[index + 3]};
        const std::size_t missing = index + 4 == text.size() ? padding : 0;
        for (std::size_t place = 0; place < missing; ++place) quartet[3 - place] = alphabet[0];

        const auto bits = quartetValue({quartet.data(), quartet.size()});
        const std::uint32_t bitsBeyondTheEnd = (1u << (8 * missing)) - 1;
        if (bits > 0xffffff || (bits & bitsBeyondTheEnd) != 0) return std::nullopt;
        for (std::size_t place = 0; place < 3 - missing; ++place)
            *out++ = static_cast<std::uint8_t>(bits >> (16 - 8 * place));
    }
    return bytes;
}

} // namespace morvex
