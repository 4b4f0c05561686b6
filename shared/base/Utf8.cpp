#include "shared/base/Utf8.h"

#include <cstddef>
#include <cstdint>

namespace morvex {
namespace {

/// So many bytes at a time are looked at with the widest instructions there are: no branch within.
constexpr std::size_t blockSize = 64;
/// The first byte of a sequence is at most so far before its last one.
constexpr std::size_t reach = 3;

bool isAscii(const char* bytes, std::size_t count) {
    char all = 0;
    for (std::size_t index = 0; index < count; ++index) all |= bytes[index];
    return (all & 0x80) == 0;
}

/// Whether a sequence that began in the three bytes goes on behind them.
bool isOpen(std::uint8_t third, std::uint8_t second, std::uint8_t last) {
    return (last >= 0xc0) | (second >= 0xe0) | (third >= 0xf0);
}

/// Whether the byte cannot follow the three before it. A text is UTF-8 when no byte is wrong in this way and
/// no sequence is open at its end.
bool isWrong(std::uint8_t third, std::uint8_t second, std::uint8_t last, std::uint8_t byte) {
    const bool isContinuation = (byte & 0xc0) == 0x80;
    const bool isNeverUsed = (byte == 0xc0) | (byte == 0xc1) | (byte > 0xf4);
    const bool isOverlong = ((last == 0xe0) & (byte < 0xa0)) | ((last == 0xf0) & (byte < 0x90));
    const bool isSurrogate = (last == 0xed) & (byte > 0x9f);
    const bool isBeyondUnicode = (last == 0xf4) & (byte > 0x8f);
    return (isContinuation != isOpen(third, second, last)) | isNeverUsed | isOverlong | isSurrogate |
           isBeyondUnicode;
}

/// `bytes` have three others before them.
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

} // namespace

bool isValidUtf8(std::string_view text) {
    if (text.size() <= blockSize && isAscii(text.data(), text.size())) return true;
    // The beginning, with zeros before it.
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
