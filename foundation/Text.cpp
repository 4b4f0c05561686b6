#include "foundation/Text.h"

#include "foundation/IcuText.h"
#include "shared/base/Ascii.h"
#include "shared/base/Require.h"

#include <unicode/brkiter.h>
#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <cstdint>
#include <memory>

namespace morvex {

using icuText::decomposed;
using icuText::fromUtf8;
using icuText::toUtf8;

namespace {

/// Calls `each` with the byte offset after every character until it returns false.
template <class Each> void forEachCharacter(std::string_view text, Each each) {
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::BreakIterator> breaks(
        icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
    std::unique_ptr<UText, decltype(&utext_close)> opened(
        utext_openUTF8(nullptr, text.data(), static_cast<std::int64_t>(text.size()), &status), &utext_close);
    require(U_SUCCESS(status), "ICU has no character boundaries");
    breaks->setText(opened.get(), status);
    for (auto end = breaks->next(); end != icu::BreakIterator::DONE; end = breaks->next())
        if (!each(static_cast<std::size_t>(end))) return;
}

std::string asciiLowerCase(std::string_view text) {
    std::string result(text);
    for (auto& letter : result) letter = asciiLower(letter);
    return result;
}

} // namespace

std::string trim(std::string_view text) {
    auto size = static_cast<std::int32_t>(text.size());
    std::int32_t start = 0;
    for (std::int32_t next = 0; next < size; start = next) {
        UChar32 character = 0;
        U8_NEXT(text.data(), next, size, character);
        if (character < 0 || !u_isUWhiteSpace(character)) break;
    }
    std::int32_t end = size;
    for (std::int32_t previous = size; previous > start; end = previous) {
        UChar32 character = 0;
        U8_PREV(text.data(), start, previous, character);
        if (character < 0 || !u_isUWhiteSpace(character)) break;
    }
    return std::string(text.substr(static_cast<std::size_t>(start), static_cast<std::size_t>(end - start)));
}

std::string firstLine(std::string_view text) {
    const auto trimmed = trim(text);
    return trim(std::string_view(trimmed).substr(0, trimmed.find('\n')));
}

std::string lowerCase(std::string_view text) {
    if (isAscii(text)) return asciiLowerCase(text);
    auto result = fromUtf8(text);
    return toUtf8(result.toLower(icu::Locale::getRoot()));
}

std::string upperCase(std::string_view text) {
    auto result = fromUtf8(text);
    return toUtf8(result.toUpper(icu::Locale::getRoot()));
}

std::string fold(std::string_view text) {
    if (isAscii(text)) return asciiLowerCase(text);
    auto letters = decomposed(fromUtf8(text).foldCase());
    icu::UnicodeString kept;
    for (std::int32_t i = 0; i < letters.length(); i = letters.moveIndex32(i, 1))
        if (auto character = letters.char32At(i); u_charType(character) != U_NON_SPACING_MARK)
            kept.append(character);
    return toUtf8(kept);
}

bool equalFolded(std::string_view left, std::string_view right) {
    return fold(left) == fold(right);
}

std::string foldCase(std::string_view text) {
    return isAscii(text) ? asciiLowerCase(text) : toUtf8(fromUtf8(text).foldCase());
}

std::string foldFileName(std::string_view name) {
    auto folded = isAscii(name) ? asciiLowerCase(name) : toUtf8(icuText::caseFolded(fromUtf8(name)));
    folded.resize(folded.find_last_not_of(". ") + 1);
    return folded;
}

std::size_t countCharacters(std::string_view text) {
    std::size_t count = 0;
    forEachCharacter(text, [&count](std::size_t) { return ++count, true; });
    return count;
}

std::string firstCharacters(std::string_view text, std::size_t count) {
    if (text.size() <= count) return std::string(text);
    std::size_t seen = 0;
    std::size_t length = 0;
    forEachCharacter(text, [&](std::size_t end) {
        if (seen == count) return false;
        length = end;
        return ++seen < count;
    });
    return std::string(text.substr(0, length));
}

std::string excerpt(std::string_view text, std::size_t count) {
    constexpr std::size_t bytesOfCharacter = 8;
    return firstCharacters(firstBytes(text, bytesOfCharacter * count), count);
}

std::string join(const std::vector<std::string>& parts, std::string_view separator) {
    std::string result;
    for (const auto& part : parts) {
        if (&part != &parts.front()) result += separator;
        result += part;
    }
    return result;
}

} // namespace morvex
