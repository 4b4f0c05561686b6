#include "shared/base/PercentEncoding.h"

#include "shared/base/Ascii.h"
#include "shared/base/Hex.h"

namespace morvex {

namespace {

bool isUnreserved(char letter) {
    return isAsciiLetterOrDigit(letter) || std::string_view("-._~").contains(letter);
}

} // namespace

std::string percentEncoded(std::string_view text, std::string_view kept) {
    std::string encoded;
    for (const char letter : text) {
        if (isUnreserved(letter) || kept.contains(letter)) {
            encoded += letter;
            continue;
        }
        const auto byte = static_cast<unsigned char>(letter);
        encoded.append({'%', upperHexDigits[byte >> 4], upperHexDigits[byte & 15]});
    }
    return encoded;
}

} // namespace morvex
