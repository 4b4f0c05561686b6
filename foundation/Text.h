#pragma once

#include "shared/base/Utf8.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace morvex {

/// Text in this program is UTF-8; invalid sequences count as U+FFFD. Nothing here depends on the locale.

/// Without white space and line breaks at both ends (Unicode property White_Space).
std::string trim(std::string_view text);

/// The first line of the trimmed text, trimmed.
std::string firstLine(std::string_view text);

/// Another case (full Unicode mapping), accents kept.
std::string lowerCase(std::string_view text);
std::string upperCase(std::string_view text);

/// Without case and diacritics, for comparing names with what a person said: "PLOCHÁ" folds to "plocha".
std::string fold(std::string_view text);
bool equalFolded(std::string_view left, std::string_view right);

/// What texts that differ in case alone have in common (full Unicode case folding), accents kept.
std::string foldCase(std::string_view text);

/// What the names of files have in common that are one name to some file system: without case, without code
/// points that do not show, and without dots and blanks at the end. For names that a disk may hold; the time
/// is the square of their length.
std::string foldFileName(std::string_view name);

/// Number of extended grapheme clusters (UAX 29): what a person calls characters.
std::size_t countCharacters(std::string_view text);

/// The first `count` extended grapheme clusters.
std::string firstCharacters(std::string_view text, std::size_t count);

/// The same of a text from outside, in at most 8 bytes a character on the average: a character has no
/// longest form, and one alone may be of any size.
std::string excerpt(std::string_view text, std::size_t count);

std::string join(const std::vector<std::string>& parts, std::string_view separator);

} // namespace morvex
