#include "foundation/IcuText.h"

#include "shared/base/Require.h"

#include <unicode/normalizer2.h>
#include <unicode/utf16.h>

#include <cstdint>

namespace morvex::icuText {

namespace {

const icu::Normalizer2& decomposer() {
    static const icu::Normalizer2* instance = [] {
        UErrorCode status = U_ZERO_ERROR;
        auto* found = icu::Normalizer2::getNFDInstance(status);
        require(U_SUCCESS(status), "ICU has no normalization data");
        return found;
    }();
    return *instance;
}

/// Whether the canonical ordering of marks continues past this character. Some characters without a combining
/// class decompose into marks that have one. Characters below U+0300 always start anew.
bool isSortedWithOthers(UChar32 character) {
    return character >= 0x300 && decomposer().hasBoundaryBefore(character) == 0;
}

/// Drops the marks beyond 30 in a row, since sorting them takes quadratic time.
icu::UnicodeString streamSafe(const icu::UnicodeString& text) {
    constexpr int longestRun = 30;
    icu::UnicodeString safe;
    std::int32_t copied = 0;
    int run = 0;
    for (std::int32_t next = 0; next < text.length();) {
        const auto start = next;
        const auto character = text.char32At(start);
        next += U16_LENGTH(character);
        run = isSortedWithOthers(character) ? run + 1 : 0;
        if (run <= longestRun) continue;
        safe.append(text, copied, start - copied);
        copied = next;
    }
    return copied == 0 ? text : safe.append(text, copied, text.length() - copied);
}

} // namespace

icu::UnicodeString fromUtf8(std::string_view text) {
    return icu::UnicodeString::fromUTF8({text.data(), static_cast<std::int32_t>(text.size())});
}

std::string toUtf8(const icu::UnicodeString& text) {
    std::string result;
    text.toUTF8String(result);
    return result;
}

icu::UnicodeString caseFolded(const icu::UnicodeString& text) {
    UErrorCode status = U_ZERO_ERROR;
    const auto* folder = icu::Normalizer2::getNFKCCasefoldInstance(status);
    require(U_SUCCESS(status), "ICU has no data for case folding");
    auto result = folder->normalize(text, status);
    return U_SUCCESS(status) ? result : text;
}

icu::UnicodeString decomposed(const icu::UnicodeString& text) {
    UErrorCode status = U_ZERO_ERROR;
    auto result = decomposer().normalize(streamSafe(text), status);
    return U_SUCCESS(status) ? result : text;
}

} // namespace morvex::icuText
