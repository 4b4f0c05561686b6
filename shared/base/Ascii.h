#pragma once

namespace morvex {

/// Of ASCII alone, whatever the locale.
constexpr bool isAsciiLetterOrDigit(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           (character >= '0' && character <= '9');
}

} // namespace morvex
