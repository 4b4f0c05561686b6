#pragma once

#include <algorithm>
#include <string_view>

namespace morvex {

/// Only ASCII counts, whatever the locale.
constexpr bool isAsciiLetterOrDigit(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           (character >= '0' && character <= '9');
}

constexpr char asciiLower(char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

/// Ignores the case of ASCII letters only.
constexpr bool equalsIgnoringCase(std::string_view one, std::string_view other) {
    return std::ranges::equal(one, other, {}, asciiLower, asciiLower);
}

} // namespace morvex
