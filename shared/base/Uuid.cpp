#include "shared/base/Uuid.h"

#include "shared/base/Hex.h"

namespace morvex {
namespace {

bool isDashPlace(std::size_t index) {
    return index == 8 || index == 13 || index == 18 || index == 23;
}

} // namespace

Uuid Uuid::fromRandom(std::array<std::uint8_t, 16> random) {
    random[6] = static_cast<std::uint8_t>((random[6] & 0x0f) | 0x40);
    random[8] = static_cast<std::uint8_t>((random[8] & 0x3f) | 0x80);
    return {random};
}

std::optional<Uuid> Uuid::parse(std::string_view text) {
    if (text.size() != 36) return std::nullopt;
    Uuid uuid;
    std::size_t digits = 0;
    for (std::size_t index = 0; index < text.size(); ++index) {
        if (isDashPlace(index)) {
            if (text[index] != '-') return std::nullopt;
            continue;
        }
        const int digit = hexDigitValue(text[index]);
        if (digit < 0) return std::nullopt;
        auto& byte = uuid.bytes[digits++ / 2];
        byte = static_cast<std::uint8_t>(byte << 4 | digit);
    }
    return uuid;
}

std::string Uuid::text() const {
    std::string text;
    text.reserve(36);
    for (const auto byte : bytes) {
        if (isDashPlace(text.size())) text += '-';
        text += upperHexDigits[byte >> 4];
        text += upperHexDigits[byte & 0x0f];
    }
    return text;
}

} // namespace morvex
