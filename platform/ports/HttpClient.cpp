#include "platform/ports/HttpClient.h"

#include "shared/base/Ascii.h"

#include <algorithm>

namespace morvex {

const std::string* HttpReply::header(std::string_view name) const {
    const auto found = std::ranges::find_if(
        headers, [name](const auto& header) { return equalsIgnoringCase(header.first, name); });
    return found == headers.end() ? nullptr : &found->second;
}

} // namespace morvex
