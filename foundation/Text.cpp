#include "foundation/Text.h"

#include "shared/base/Require.h"

#include <unicode/brkiter.h>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <memory>

namespace morvex {

namespace {

icu::UnicodeString fromUtf8(std::string_view text) {
    return icu::UnicodeString::fromUTF8({text.data(), static_cast<std::int32_t>(text.size())});
}

std::string toUtf8(const icu::UnicodeString& text) {
    std::string result;
    text.toUTF8String(result);
    return result;
}

const icu::Normalizer2& decomposer() {
    static const icu::Normalizer2* instance = [] {
        UErrorCode status = U_ZERO_ERROR;
        auto* found = icu::Normalizer2::getNFDInstance(status);
        vyzaduj(U_SUCCESS(status), "ICU has no normalization data");
        return found;
    }();
    return *instance;
}

icu::UnicodeString decompose(const icu::UnicodeString& text) {
    UErrorCode status = U_ZERO_ERROR;
    auto result = decomposer().normalize(text, status);
    return U_SUCCESS(status) ? result : text;
}

bool containsDecomposed(const icu::UnicodeString& whole, const icu::UnicodeString& wanted) {
    if (wanted.isEmpty()) return true;
    for (auto found = whole.indexOf(wanted); found >= 0; found = whole.indexOf(wanted, found + 1)) {
        // A mark behind the match belongs to its last letter, which is then another letter.
        auto behind = found + wanted.length();
        if (behind >= whole.length() || u_charType(whole.char32At(behind)) != U_NON_SPACING_MARK) return true;
    }
    return false;
}

/// Calls `each` with the byte offset behind every character until it answers false.
template <class Each> void forEachCharacter(std::string_view text, Each each) {
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::BreakIterator> breaks(
        icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
    std::unique_ptr<UText, decltype(&utext_close)> opened(
        utext_openUTF8(nullptr, text.data(), static_cast<std::int64_t>(text.size()), &status), &utext_close);
    vyzaduj(U_SUCCESS(status), "ICU has no character boundaries");
    breaks->setText(opened.get(), status);
    for (auto end = breaks->next(); end != icu::BreakIterator::DONE; end = breaks->next())
        if (!each(static_cast<std::size_t>(end))) return;
}

/// So many bytes at a time are looked at with the widest instructions there are.
constexpr std::size_t blockSize = 64;

bool isAsciiBlock(const char* bytes) {
    std::array<std::uint64_t, blockSize / sizeof(std::uint64_t)> words{};
    std::memcpy(words.data(), bytes, blockSize);
    std::uint64_t all = 0;
    for (auto word : words) all |= word;
    return (all & 0x8080808080808080U) == 0;
}

/// Bytes before the first invalid sequence.
std::size_t validLength(std::string_view text) {
    for (std::size_t next = 0; next < text.size();) {
        if (next + blockSize <= text.size() && isAsciiBlock(text.data() + next)) {
            next += blockSize;
            continue;
        }
        // Past what the block has too much, or to the end.
        auto stop = std::min(next + blockSize, text.size());
        while (next < stop) {
            auto start = next;
            UChar32 character = 0;
            U8_NEXT(text.data(), next, text.size(), character);
            if (character < 0) return start;
        }
    }
    return text.size();
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

std::string lowerCase(std::string_view text) {
    auto result = fromUtf8(text);
    return toUtf8(result.toLower(icu::Locale::getRoot()));
}

std::string upperCase(std::string_view text) {
    auto result = fromUtf8(text);
    return toUtf8(result.toUpper(icu::Locale::getRoot()));
}

std::string fold(std::string_view text) {
    auto decomposed = decompose(fromUtf8(text).foldCase());
    icu::UnicodeString kept;
    for (std::int32_t i = 0; i < decomposed.length(); i = decomposed.moveIndex32(i, 1))
        if (auto character = decomposed.char32At(i); u_charType(character) != U_NON_SPACING_MARK)
            kept.append(character);
    return toUtf8(kept);
}

bool equalFolded(std::string_view left, std::string_view right) {
    return fold(left) == fold(right);
}

bool contains(std::string_view text, std::string_view part) {
    return containsDecomposed(decompose(fromUtf8(text)), decompose(fromUtf8(part)));
}

bool containsIgnoringCase(std::string_view text, std::string_view part) {
    return containsDecomposed(decompose(fromUtf8(text).foldCase()), decompose(fromUtf8(part).foldCase()));
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

std::string repairUtf8(std::string_view text) {
    std::string result;
    for (;;) {
        auto valid = validLength(text);
        result += text.substr(0, valid);
        text.remove_prefix(valid);
        if (text.empty()) return result;
        std::size_t next = 0;
        [[maybe_unused]] UChar32 invalid = 0;
        U8_NEXT(text.data(), next, text.size(), invalid);
        result += "\ufffd";
        text.remove_prefix(next);
    }
}

bool isValidUtf8(std::string_view text) {
    return validLength(text) == text.size();
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
