#include "app/mail/protocol/QuotedPrintable.h"

namespace morvex {

namespace {

/// The value of a hexadecimal digit, or -1.
int digitValue(char digit) {
    if (digit >= '0' && digit <= '9') return digit - '0';
    if (digit >= 'A' && digit <= 'F') return digit - 'A' + 10;
    if (digit >= 'a' && digit <= 'f') return digit - 'a' + 10;
    return -1;
}

} // namespace

std::string quotedPrintableBytes(std::string_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (;;) {
        const auto mark = text.find('=');
        bytes += text.substr(0, mark);
        if (mark == std::string_view::npos) return bytes;
        text.remove_prefix(mark);
        const int high = text.size() > 2 ? digitValue(text[1]) : -1;
        const int low = text.size() > 2 ? digitValue(text[2]) : -1;
        if (high >= 0 && low >= 0) {
            bytes += static_cast<char>(high << 4 | low);
            text.remove_prefix(3);
        } else if (text.starts_with("=\r\n")) {
            text.remove_prefix(3);
        } else if (text.starts_with("=\n")) {
            text.remove_prefix(2);
        } else {
            bytes += '=';
            text.remove_prefix(1);
        }
    }
}

} // namespace morvex
