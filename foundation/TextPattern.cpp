#include "foundation/TextPattern.h"

#include "foundation/IcuText.h"
#include "foundation/Text.h"

#include <unicode/locid.h>
#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <cstddef>

namespace morvex {

namespace {

std::string decomposed(const icu::UnicodeString& text) {
    return icuText::toUtf8(icuText::decomposed(text));
}

std::vector<std::uint32_t> bordersOf(std::string_view pattern) {
    std::vector<std::uint32_t> borders(pattern.size(), 0);
    std::uint32_t length = 0;
    for (std::size_t i = 1; i < pattern.size(); ++i) {
        while (length > 0 && pattern[i] != pattern[length]) length = borders[length - 1];
        if (pattern[i] == pattern[length]) ++length;
        borders[i] = length;
    }
    return borders;
}

/// Whether a combining mark stands at `place`: it belongs to the letter before it and makes it another
/// letter.
bool isMarkAt(std::string_view text, std::size_t place) {
    if (place >= text.size() || static_cast<unsigned char>(text[place]) < 0x80) return false;
    UChar32 letter = 0;
    U8_NEXT(text.data(), place, text.size(), letter);
    return u_charType(letter) == U_NON_SPACING_MARK;
}

} // namespace

TextPattern::TextPattern(std::string_view part)
    : decomposed_(decomposed(icuText::fromUtf8(part))), borders_(bordersOf(decomposed_)) {}

TextPattern TextPattern::ignoringCase(std::string_view part) {
    return TextPattern(foldCase(part));
}

bool TextPattern::isIn(std::string_view text) const {
    // ASCII text is already decomposed.
    return isAscii(text) ? isAmong(text) : isAmong(decomposed(icuText::fromUtf8(text)));
}

bool TextPattern::isInLowerCaseOf(std::string_view text) const {
    if (isAscii(text)) return isAmong(lowerCase(text));
    auto lowered = icuText::fromUtf8(text);
    return isAmong(decomposed(lowered.toLower(icu::Locale::getRoot())));
}

std::string TextPattern::searchable(std::string_view text) {
    if (isAscii(text)) return foldCase(text);
    auto folded = icuText::fromUtf8(text);
    return decomposed(folded.foldCase());
}

/// The algorithm of Knuth, Morris and Pratt.
bool TextPattern::isAmong(std::string_view searchable) const {
    if (decomposed_.empty()) return true;
    std::size_t matched = 0;
    for (std::size_t i = 0; i < searchable.size(); ++i) {
        if (matched == 0 && (i = searchable.find(decomposed_.front(), i)) == std::string_view::npos)
            return false;
        while (matched > 0 && decomposed_[matched] != searchable[i]) matched = borders_[matched - 1];
        if (decomposed_[matched] == searchable[i]) ++matched;
        if (matched < decomposed_.size()) continue;
        if (!isMarkAt(searchable, i + 1)) return true;
        matched = borders_[matched - 1];
    }
    return false;
}

} // namespace morvex
