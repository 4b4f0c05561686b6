#pragma once

#include <string_view>

namespace morvex {

inline constexpr std::string_view upperHexDigits = "0123456789ABCDEF";

/// The value of one hexadecimal digit of either case, or -1.
constexpr int hexDigitValue(char digit) {
    if (digit >= '0' && digit <= '9') return digit - '0';
    if (digit >= 'A' && digit <= 'F') return digit - 'A' + 10;
    if (digit >= 'a' && digit <= 'f') return digit - 'a' + 10;
    return -1;
}

} // namespace morvex
