#pragma once

#include <string>
#include <string_view>

namespace morvex {

// What is left of texts of other people, code point by code point. Invalid sequences count as U+FFFD.

/// Letters, marks and numbers (Unicode general categories L, M and N) and "_"; every other code point becomes
/// "_".
std::string alphanumericText(std::string_view text);

/// What a reader sees: without invisible characters (categories Cf, Cn, Co, and Default_Ignorable_Code_Point,
/// which hides texts in variation selectors and tags), and with a blank for every control character and line
/// or paragraph separator (Cc, Zl, Zp).
std::string visibleText(std::string_view text);

/// Words of another program that a person or an assistant is told: what a reader sees of the first 500
/// characters.
std::string foreignWords(std::string_view text);

/// Whether it has a character that `visibleText` leaves out.
bool hasInvisible(std::string_view text);

} // namespace morvex
