#pragma once

#include <unicode/unistr.h>

#include <string>
#include <string_view>

/// Conversion to and from the strings of the Unicode library, and its operations for this folder.
namespace morvex::icuText {

icu::UnicodeString fromUtf8(std::string_view text);
std::string toUtf8(const icu::UnicodeString& text);

/// Normalization form D (UAX 15). Only the first 30 marks of a letter are kept, as in the Stream-Safe Text
/// Format (section 13), so that the time is proportional to the length for any text; no language uses that
/// many.
icu::UnicodeString decomposed(const icu::UnicodeString& text);

/// Normalization form NFKC_Casefold (UAX 31): without case, and without invisible code points. The time is
/// quadratic in the number of marks of a letter.
icu::UnicodeString caseFolded(const icu::UnicodeString& text);

} // namespace morvex::icuText
