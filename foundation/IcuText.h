#pragma once

#include <unicode/unistr.h>

#include <string>
#include <string_view>

/// The way into the Unicode library and back, for what this folder does with text.
namespace morvex::icuText {

icu::UnicodeString fromUtf8(std::string_view text);
std::string toUtf8(const icu::UnicodeString& text);

/// Normalization form D (UAX 15). Of the marks of one letter the first 30 count, as in the Stream-Safe Text
/// Format (section 13), so that the time is in proportion to the length whatever the text is; no language
/// writes as many.
icu::UnicodeString decomposed(const icu::UnicodeString& text);

/// Normalization form NFKC_Casefold (UAX 31): without case, and without the code points that do not show.
/// Takes the square of the number of marks of a letter.
icu::UnicodeString caseFolded(const icu::UnicodeString& text);

} // namespace morvex::icuText
