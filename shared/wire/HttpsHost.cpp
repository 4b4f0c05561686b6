#include "shared/wire/HttpsHost.h"

#include <boost/url.hpp>

namespace morvex {

namespace {

/// A URI has ASCII letters only.
std::string withoutOtherLetters(std::string_view address) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text;
    for (const char character : address) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte < 0x80)
            text += character;
        else
            text.append({'%', digits[byte >> 4U], digits[byte & 15U]});
    }
    return text;
}

} // namespace

std::optional<std::string> httpsHost(std::string_view address) {
    const auto text = withoutOtherLetters(address);
    const auto parsed = boost::urls::parse_uri(text);
    if (!parsed || parsed->scheme_id() != boost::urls::scheme::https || parsed->encoded_host().empty())
        return std::nullopt;
    return parsed->host();
}

} // namespace morvex
