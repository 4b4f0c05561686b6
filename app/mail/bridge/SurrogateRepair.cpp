#include "app/mail/bridge/SurrogateRepair.h"

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace morvex {

namespace {

constexpr std::size_t escapeSize = 6; ///< `\uXXXX`
constexpr std::string_view replacement = "\\ufffd";

/// The number of the escape that begins here; 0 if it is no `\u` with four digits.
std::uint16_t unitAt(std::string_view json, std::size_t at) {
    const auto escape = json.substr(at, escapeSize);
    if (escape.size() < escapeSize || !escape.starts_with("\\u")) return 0;
    std::uint16_t unit = 0;
    const auto* end = escape.data() + escape.size();
    return std::from_chars(escape.data() + 2, end, unit, 16).ptr == end ? unit : 0;
}

bool isLeading(std::uint16_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}

bool isTrailing(std::uint16_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

} // namespace

std::string withoutLoneSurrogates(std::string json) {
    for (auto at = json.find('\\'); at < json.size(); at = json.find('\\', at)) {
        const auto unit = unitAt(json, at);
        if (isLeading(unit) && isTrailing(unitAt(json, at + escapeSize))) {
            at += 2 * escapeSize;
        } else if (isLeading(unit) || isTrailing(unit)) {
            json.replace(at, escapeSize, replacement);
            at += escapeSize;
        } else {
            at += 2; // an escaped backslash begins no other escape
        }
    }
    return json;
}

} // namespace morvex
