#include "foundation/IcuText.h"

#include "shared/base/Require.h"

#include <unicode/normalizer2.h>

#include <cstdint>

namespace morvex::icuText {

namespace {

const icu::Normalizer2& decomposer() {
    static const icu::Normalizer2* instance = [] {
        UErrorCode status = U_ZERO_ERROR;
        auto* found = icu::Normalizer2::getNFDInstance(status);
        vyzaduj(U_SUCCESS(status), "ICU has no normalization data");
        return found;
    }();
    return *instance;
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

icu::UnicodeString decomposed(const icu::UnicodeString& text) {
    UErrorCode status = U_ZERO_ERROR;
    auto result = decomposer().normalize(text, status);
    return U_SUCCESS(status) ? result : text;
}

} // namespace morvex::icuText
