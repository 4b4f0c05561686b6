#include "foundation/Printable.h"

#include "foundation/Text.h"

#include <algorithm>

namespace morvex {

namespace {

constexpr std::string_view replacement = "\uFFFD";

/// The length of a character at the start of `text` (valid UTF-8) that must not reach a terminal, or 0.
std::size_t forbiddenLength(std::string_view text) {
    const auto byte = [text](std::size_t index) {
        return index < text.size() ? static_cast<unsigned char>(text[index]) : 0U;
    };
    const auto first = byte(0);
    if (first == '\n' || first == '\t') return 0;
    if (first < 0x20 || first == 0x7f) return 1;
    if (first == 0xc2 && byte(1) < 0xa0) return 2;  // U+0080 to U+009F
    if (first == 0xd8 && byte(1) == 0x9c) return 2; // U+061C
    if (first != 0xe2) return 0;
    const bool isMark = byte(1) == 0x80 && (byte(2) == 0x8e || byte(2) == 0x8f); // U+200E, U+200F
    // U+2028 and U+2029 (line breaks), U+202A to U+202E
    const bool isBreakOrEmbedding = byte(1) == 0x80 && byte(2) >= 0xa8 && byte(2) <= 0xae;
    const bool isIsolate = byte(1) == 0x81 && byte(2) >= 0xa6 && byte(2) <= 0xa9; // U+2066 to U+2069
    return isMark || isBreakOrEmbedding || isIsolate ? 3 : 0;
}

} // namespace

std::string printable(std::string_view text) {
    const auto valid = repairUtf8(text);
    std::string out;
    out.reserve(valid.size());
    for (std::string_view rest = valid; !rest.empty();) {
        if (rest.starts_with("\r\n")) rest.remove_prefix(1);
        auto forbidden = forbiddenLength(rest);
        if (forbidden > 0)
            out += replacement;
        else
            out += rest.front();
        rest.remove_prefix(forbidden > 0 ? forbidden : 1);
    }
    return out;
}

std::string printableLine(std::string_view text) {
    auto line = printable(text);
    std::ranges::replace(line, '\n', ' ');
    return line;
}

} // namespace morvex
