#include "platform/net/RequestHeaders.h"

#include "platform/ports/NetworkError.h"
#include "shared/base/Ascii.h"

#include <algorithm>

namespace morvex {

namespace {

bool breaksLine(std::string_view text) {
    return text.find_first_of(std::string_view("\r\n\0", 3)) != std::string_view::npos;
}

} // namespace

bool isToken(std::string_view text) {
    return !text.empty() && std::ranges::all_of(text, [](char character) {
        return isAsciiLetterOrDigit(character) || std::string_view("!#$%&'*+-.^_`|~").contains(character);
    });
}

Result<void> checkHeaders(const std::vector<std::pair<std::string, std::string>>& headers) {
    std::size_t size = 0;
    for (const auto& [name, value] : headers) size += name.size() + value.size();
    if (size > longestHeaders) return fail(NetworkError{"Hlavička požadavku je příliš dlouhá."_sentence});
    const bool areSound = std::ranges::all_of(
        headers, [](const auto& header) { return isToken(header.first) && !breaksLine(header.second); });
    if (areSound) return {};
    return fail(NetworkError{"Hlavička požadavku má neplatné znaky."_sentence});
}

} // namespace morvex
