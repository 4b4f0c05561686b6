#include "shared/base/Base64.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace morvex {
namespace {

constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

/// The two digits for each value of twelve bits.
constexpr auto digitPairs = [] {
    std::array<std::array<char, 2>, 4096> pairs{};
    for (std::size_t bits = 0; bits < pairs.size(); ++bits)
        pairs[bits] = {alphabet[bits >> 6], alphabet[bits & 0x3f]};
    return pairs;
}();

/// A flag above the 24 bits of four digits; set when one of them is outside the alphabet.
constexpr std::uint32_t noDigit = 0x0100'0000;

/// The bits that each character contributes to the 24, for each of the four places.
constexpr auto digitValues = [] {
    std::array<std::array<std::uint32_t, 256>, 4> values{};
    for (std::size_t place = 0; place < values.size(); ++place) {
        values[place].fill(noDigit);
        for (std::uint32_t digit = 0; digit < alphabet.size(); ++digit)
            values[place][static_cast<std::uint8_t>(alphabet[digit])] = digit << (18 - 6 * place);
    }
    return values;
}();

/// Spare capacity, since the caller usually appends the rest of a record; without it a long text would be
/// copied once more.
constexpr std::size_t roomBehind = 1024;

void encodeTriple(char* out, const std::uint8_t* triple) {
    const auto bits = std::uint32_t{triple[0]} << 16 | std::uint32_t{triple[1]} << 8 | triple[2];
    std::memcpy(out, digitPairs[bits >> 12].data(), 2);
    std::memcpy(out + 2, digitPairs[bits & 0xfff].data(), 2);
}

std::uint32_t quartetValue(const char* quartet) {
    std::uint32_t bits = 0;
    for (std::size_t place = 0; place < 4; ++place)
        bits |= digitValues[place][static_cast<std::uint8_t>(quartet[place])];
    return bits;
}

void writeTriple(std::uint8_t* out, std::uint32_t bits) {
    out[0] = static_cast<std::uint8_t>(bits >> 16);
    out[1] = static_cast<std::uint8_t>(bits >> 8);
    out[2] = static_cast<std::uint8_t>(bits);
}

/// Decodes the last four digits into one to three bytes; the last `padding` of them are only padding.
bool decodeLast(std::uint8_t* out, const char* text, std::size_t padding) {
    char quartet[4];
    std::memcpy(quartet, text, sizeof quartet);
    std::fill_n(quartet + 4 - padding, padding, alphabet[0]);
    const auto bits = quartetValue(quartet);
    const std::uint32_t bitsBeyondTheEnd = (1U << (8 * padding)) - 1;
    std::uint8_t triple[3];
    writeTriple(triple, bits);
    std::copy_n(triple, 3 - padding, out);
    return ((bits & noDigit) | (bits & bitsBeyondTheEnd)) == 0;
}

} // namespace

void appendBase64(std::string& out, ByteView bytes) {
    const auto start = out.size();
    const auto end = start + (bytes.size() + 2) / 3 * 4;
    const auto whole = bytes.size() / 3 * 3;
    if (end > out.capacity()) out.reserve(end + roomBehind);
    out.resize(end, '=');
    auto* to = out.data() + start;
    for (std::size_t index = 0; index < whole; index += 3, to += 4) encodeTriple(to, bytes.data() + index);
    if (whole == bytes.size()) return;

    std::uint8_t last[3] = {};
    char digits[4];
    std::ranges::copy(bytes.subspan(whole), last);
    encodeTriple(digits, last);
    std::copy_n(digits, bytes.size() - whole + 1, to);
}

std::string base64Encode(ByteView bytes) {
    std::string text;
    appendBase64(text, bytes);
    return text;
}

std::optional<Bytes> base64Decode(std::string_view text) {
    if (text.size() % 4 != 0) return std::nullopt;
    if (text.empty()) return Bytes{};
    const std::size_t padding = text.ends_with("==") ? 2 : text.ends_with('=') ? 1 : 0;
    Bytes bytes(text.size() / 4 * 3 - padding);
    auto* to = bytes.data();
    const auto last = text.size() - 4;
    std::uint32_t seen = 0;
    for (std::size_t index = 0; index < last; index += 4, to += 3) {
        const auto bits = quartetValue(text.data() + index);
        seen |= bits;
        writeTriple(to, bits);
    }
    if ((seen & noDigit) != 0 || !decodeLast(to, text.data() + last, padding)) return std::nullopt;
    return bytes;
}

} // namespace morvex
