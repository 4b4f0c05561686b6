#include "foundation/TextPattern.h"

#include "foundation/IcuText.h"
#include "foundation/Text.h"

#include <unicode/locid.h>
#include <unicode/uchar.h>
#include <unicode/utf16.h>

#include <algorithm>
#include <cstddef>

namespace morvex {

namespace {

std::u16string_view unitsOf(const icu::UnicodeString& text) {
    return {text.getBuffer(), static_cast<std::size_t>(text.length())};
}

std::vector<std::uint32_t> bordersOf(std::u16string_view pattern) {
    std::vector<std::uint32_t> borders(pattern.size(), 0);
    std::uint32_t length = 0;
    for (std::size_t i = 1; i < pattern.size(); ++i) {
        while (length > 0 && pattern[i] != pattern[length]) length = borders[length - 1];
        if (pattern[i] == pattern[length]) ++length;
        borders[i] = length;
    }
    return borders;
}

/// A mark there belongs to the letter before it, which is then another letter.
template <class Unit> bool isMarkAt(std::basic_string_view<Unit> text, std::size_t place) {
    if (place >= text.size() || text[place] < 0x80) return false;
    UChar32 letter = 0;
    U16_NEXT(text.data(), place, text.size(), letter);
    return u_charType(letter) == U_NON_SPACING_MARK;
}

} // namespace

TextPattern::TextPattern(std::string_view part) {
    const auto decomposed = icuText::decomposed(icuText::fromUtf8(part));
    decomposed_ = unitsOf(decomposed);
    borders_ = bordersOf(decomposed_);
    isAscii_ = std::ranges::all_of(decomposed_, [](char16_t unit) { return unit < 0x80; });
}

TextPattern TextPattern::ignoringCase(std::string_view part) {
    return TextPattern(foldCase(part));
}

bool TextPattern::isIn(std::string_view text) const {
    // ASCII is its own decomposition.
    if (isAscii(text)) return isAscii_ && isAmong(text);
    return isAmong(unitsOf(icuText::decomposed(icuText::fromUtf8(text))));
}

bool TextPattern::isInLowerCaseOf(std::string_view text) const {
    if (isAscii(text)) return isIn(lowerCase(text));
    auto lowered = icuText::fromUtf8(text);
    return isAmong(unitsOf(icuText::decomposed(lowered.toLower(icu::Locale::getRoot()))));
}

bool TextPattern::isInAnyCaseIn(std::string_view text) const {
    if (isAscii(text)) return isIn(lowerCase(text));
    auto folded = icuText::fromUtf8(text);
    return isAmong(unitsOf(icuText::decomposed(folded.foldCase())));
}

/// Knuth, Morris and Pratt.
template <class Unit> bool TextPattern::isAmong(std::basic_string_view<Unit> decomposed) const {
    if (decomposed_.empty()) return true;
    std::size_t matched = 0;
    for (std::size_t i = 0; i < decomposed.size(); ++i) {
        const auto unit = static_cast<char16_t>(decomposed[i]);
        while (matched > 0 && decomposed_[matched] != unit) matched = borders_[matched - 1];
        if (decomposed_[matched] == unit) ++matched;
        if (matched < decomposed_.size()) continue;
        if (!isMarkAt(decomposed, i + 1)) return true;
        matched = borders_[matched - 1];
    }
    return false;
}

} // namespace morvex
