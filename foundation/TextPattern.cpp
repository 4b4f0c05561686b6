#include "foundation/TextPattern.h"

#include "foundation/IcuText.h"
#include "foundation/Text.h"

#include <unicode/locid.h>
#include <unicode/uchar.h>

#include <algorithm>
#include <cstdint>

namespace morvex {

namespace {

bool containsDecomposed(const icu::UnicodeString& whole, const std::u16string& part) {
    const icu::UnicodeString wanted(false, part.data(), static_cast<std::int32_t>(part.size()));
    if (wanted.isEmpty()) return true;
    for (auto found = whole.indexOf(wanted); found >= 0; found = whole.indexOf(wanted, found + 1)) {
        // A mark behind the match belongs to its last letter, which is then another letter.
        auto behind = found + wanted.length();
        if (behind >= whole.length() || u_charType(whole.char32At(behind)) != U_NON_SPACING_MARK) return true;
    }
    return false;
}

} // namespace

TextPattern::TextPattern(std::string_view part) {
    const auto decomposed = icuText::decomposed(icuText::fromUtf8(part));
    decomposed_.assign(decomposed.getBuffer(), static_cast<std::size_t>(decomposed.length()));
    if (std::ranges::all_of(decomposed_, [](char16_t unit) { return unit < 0x80; }))
        ascii_.emplace(decomposed_.begin(), decomposed_.end());
}

bool TextPattern::isIn(std::string_view text) const {
    // ASCII is its own decomposition and has no marks.
    if (isAscii(text)) return ascii_ && text.contains(*ascii_);
    return containsDecomposed(icuText::decomposed(icuText::fromUtf8(text)), decomposed_);
}

bool TextPattern::isInLowerCaseOf(std::string_view text) const {
    if (isAscii(text)) return isIn(lowerCase(text));
    auto lowered = icuText::fromUtf8(text);
    return containsDecomposed(icuText::decomposed(lowered.toLower(icu::Locale::getRoot())), decomposed_);
}

} // namespace morvex
