#pragma once

#include "shared/base/Utf8.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace morvex {

/// Text in this program is UTF-8; invalid sequences count as U+FFFD. Nothing here depends on the locale.

/// Removes white space and line breaks at both ends (Unicode property White_Space).
std::string trim(std::string_view text);

/// The first line of the trimmed text, trimmed.
std::string firstLine(std::string_view text);

/// Changes the case (full Unicode mapping) and keeps the accents.
std::string lowerCase(std::string_view text);
std::string upperCase(std::string_view text);

/// Removes case and diacritics, to compare names with spoken text: "PLOCHÁ" folds to "plocha".
std::string fold(std::string_view text);
bool equalFolded(std::string_view left, std::string_view right);

/// A common form of texts that differ only in case (full Unicode case folding); keeps the accents.
std::string foldCase(std::string_view text);

/// A common form of all file names that some file system treats as the same name: without case, without
/// invisible code points, and without dots and blanks at the end. Only for names that a disk can hold, since
/// the time is quadratic in their length.
std::string foldFileName(std::string_view name);

/// Number of extended grapheme clusters (UAX 29), which people call characters.
std::size_t countCharacters(std::string_view text);

/// The first `count` extended grapheme clusters.
std::string firstCharacters(std::string_view text, std::size_t count);

/// Like `firstCharacters`, for text from outside: at most 8 * `count` bytes, since a single character may
/// have any length.
std::string excerpt(std::string_view text, std::size_t count);

std::string join(const std::vector<std::string>& parts, std::string_view separator);

} // namespace morvex
