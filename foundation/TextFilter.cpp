#include "foundation/TextFilter.h"

#include "foundation/Text.h"

#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <array>
#include <cstdint>

namespace morvex {

namespace {

constexpr UChar32 replacement = 0xFFFD;

/// Calls `each` with every code point.
template <class Each> void forEachCodePoint(std::string_view text, Each each) {
    const auto size = static_cast<std::int32_t>(text.size());
    for (std::int32_t next = 0; next < size;) {
        UChar32 codePoint = 0;
        U8_NEXT(text.data(), next, size, codePoint);
        each(codePoint < 0 ? replacement : codePoint);
    }
}

void append(std::string& text, UChar32 codePoint) {
    std::array<char, U8_MAX_LENGTH> bytes{};
    std::int32_t length = 0;
    U8_APPEND_UNSAFE(bytes.data(), length, codePoint);
    text.append(bytes.data(), static_cast<std::size_t>(length));
}

bool isIn(UChar32 codePoint, std::uint32_t categories) {
    return (U_GET_GC_MASK(codePoint) & categories) != 0;
}

bool isInvisible(UChar32 codePoint) {
    if (isIn(codePoint, U_GC_CC_MASK)) return false;
    return isIn(codePoint, U_GC_C_MASK) ||
           u_hasBinaryProperty(codePoint, UCHAR_DEFAULT_IGNORABLE_CODE_POINT) != 0;
}

} // namespace

std::string alphanumericText(std::string_view text) {
    std::string kept;
    kept.reserve(text.size());
    forEachCodePoint(text, [&kept](UChar32 codePoint) {
        append(kept, isIn(codePoint, U_GC_L_MASK | U_GC_M_MASK | U_GC_N_MASK) ? codePoint : U'_');
    });
    return kept;
}

std::string visibleText(std::string_view text) {
    std::string kept;
    kept.reserve(text.size());
    forEachCodePoint(text, [&kept](UChar32 codePoint) {
        if (isIn(codePoint, U_GC_CC_MASK | U_GC_ZL_MASK | U_GC_ZP_MASK))
            kept += ' ';
        else if (!isInvisible(codePoint))
            append(kept, codePoint);
    });
    return kept;
}

std::string foreignWords(std::string_view text) {
    constexpr std::size_t longest = 500;
    return excerpt(visibleText(excerpt(text, longest * 8)), longest);
}

bool hasInvisible(std::string_view text) {
    bool found = false;
    forEachCodePoint(text, [&found](UChar32 codePoint) { found = found || isInvisible(codePoint); });
    return found;
}

} // namespace morvex
