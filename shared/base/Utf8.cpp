#include "shared/base/Utf8.h"

#include <array>
#include <cstdint>

namespace morvex {
namespace {

/// Bytes checked at a time; a block is checked without branches so that the compiler can vectorise it.
constexpr std::size_t blockSize = 64;
/// The first byte of a sequence is at most this far before its last byte.
constexpr std::size_t reach = 3;

bool isAscii(const char* bytes, std::size_t count) {
    char all = 0;
    for (std::size_t index = 0; index < count; ++index) all |= bytes[index];
    return (all & 0x80) == 0;
}

/// Whether a sequence that began in these three bytes continues after them.
bool isOpen(std::uint8_t third, std::uint8_t second, std::uint8_t last) {
    return (last >= 0xc0) | (second >= 0xe0) | (third >= 0xf0);
}

/// Whether `byte` cannot follow the three bytes before it. A text is UTF-8 when no byte is wrong in this way
/// and no sequence is incomplete at the end.
bool isWrong(std::uint8_t third, std::uint8_t second, std::uint8_t last, std::uint8_t byte) {
    const bool isContinuation = (byte & 0xc0) == 0x80;
    const bool isNeverUsed = (byte == 0xc0) | (byte == 0xc1) | (byte > 0xf4);
    const bool isOverlong = ((last == 0xe0) & (byte < 0xa0)) | ((last == 0xf0) & (byte < 0x90));
    const bool isSurrogate = (last == 0xed) & (byte > 0x9f);
    const bool isBeyondUnicode = (last == 0xf4) & (byte > 0x8f);
    return (isContinuation != isOpen(third, second, last)) | isNeverUsed | isOverlong | isSurrogate |
           isBeyondUnicode;
}

/// The three bytes before `bytes` must be readable.
bool areWrong(const char* bytes, std::size_t count) {
    std::uint8_t wrong = 0;
    for (const auto* next = bytes; next < bytes + count; ++next)
        wrong |= isWrong(static_cast<std::uint8_t>(next[-3]), static_cast<std::uint8_t>(next[-2]),
                         static_cast<std::uint8_t>(next[-1]), static_cast<std::uint8_t>(next[0]));
    return wrong != 0;
}

bool isOpenBefore(const char* bytes) {
    return isOpen(static_cast<std::uint8_t>(bytes[-3]), static_cast<std::uint8_t>(bytes[-2]),
                  static_cast<std::uint8_t>(bytes[-1]));
}

/// Length in bytes of a sequence with this first byte; 0 if no sequence begins with it.
std::size_t lengthAfter(std::uint8_t first) {
    if (first < 0x80) return 1;
    if (first < 0xc2 || first > 0xf4) return 0;
    return first < 0xe0 ? 2 : first < 0xf0 ? 3 : 4;
}

/// Length of the sequence at the start of `text` up to the first wrong or missing byte.
std::size_t begunLength(std::string_view text, std::size_t wanted) {
    std::array<std::uint8_t, reach> before{0, 0, static_cast<std::uint8_t>(text.front())};
    std::size_t length = 1;
    for (; length < wanted && length < text.size(); ++length) {
        const auto byte = static_cast<std::uint8_t>(text[length]);
        if (isWrong(before[0], before[1], before[2], byte)) break;
        before = {before[1], before[2], byte};
    }
    return length;
}

} // namespace

bool isAscii(std::string_view text) {
    return isAscii(text.data(), text.size());
}

std::string firstBytes(std::string_view text, std::size_t count) {
    if (text.size() <= count) return std::string(text);
    while (count > 0 && (text[count] & 0xc0) == 0x80) --count;
    return std::string(text.substr(0, count));
}

std::string clipped(std::string_view text, std::size_t count) {
    return text.size() <= count ? std::string(text) : firstBytes(text, count) + "…";
}

std::string repairUtf8(std::string_view text) {
    if (isValidUtf8(text)) return std::string(text);
    std::string result;
    while (!text.empty()) {
        const auto wanted = lengthAfter(static_cast<std::uint8_t>(text.front()));
        const auto length = begunLength(text, wanted);
        result += length == wanted ? text.substr(0, length) : "\uFFFD";
        text.remove_prefix(length);
    }
    return result;
}

bool isValidUtf8(std::string_view text) {
    if (text.size() <= blockSize && isAscii(text.data(), text.size())) return true;
    // Checks the first bytes with zeros in front of them.
    char start[2 * reach] = {};
    const auto begun = text.copy(start + reach, reach);
    if (areWrong(start + reach, begun)) return false;
    if (begun < reach) return !isOpenBefore(start + reach + begun);

    const auto* next = text.data() + reach;
    const auto* end = text.data() + text.size();
    for (; end - next >= static_cast<std::ptrdiff_t>(blockSize); next += blockSize)
        if (isAscii(next, blockSize) ? isOpenBefore(next) : areWrong(next, blockSize)) return false;
    return !areWrong(next, static_cast<std::size_t>(end - next)) && !isOpenBefore(end);
}

} // namespace morvex
