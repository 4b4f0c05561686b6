#include "app/mail/protocol/MailAddress.h"

#include "app/mail/protocol/MacMailProtocolError.h"
#include "shared/base/Ascii.h"

#include <algorithm>

namespace morvex {

namespace {

bool isLetter(char character) {
    const char lower = asciiLower(character);
    return lower >= 'a' && lower <= 'z';
}

/// A text of letters, digits and these characters, and of nothing else.
bool consistsOf(std::string_view text, std::string_view others) {
    return !text.empty() && std::ranges::all_of(text, [&](char character) {
        return isAsciiLetterOrDigit(character) || others.contains(character);
    });
}

bool isTopDomain(std::string_view name) {
    return name.size() >= 2 && name.size() <= 63 && std::ranges::all_of(name, isLetter);
}

bool isMailAddress(std::string_view address) {
    const auto at = address.find('@');
    if (at == std::string_view::npos) return false;
    const auto domain = address.substr(at + 1);
    const auto dot = domain.rfind('.');
    if (dot == std::string_view::npos) return false;
    return consistsOf(address.substr(0, at), "._%+-") && consistsOf(domain.substr(0, dot), ".-") &&
           isTopDomain(domain.substr(dot + 1));
}

} // namespace

Result<void> checkMailAddress(std::string_view address) {
    if (!isMailAddress(address)) return fail(MacMailProtocolError::invalidAddress());
    return {};
}

} // namespace morvex
