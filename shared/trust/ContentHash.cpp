#include "shared/trust/ContentHash.h"

#include "shared/trust/Crypto.h"

namespace morvex {

std::string contentHash(std::string_view detail) {
    constexpr std::string_view digits = "0123456789abcdef";
    const auto digest = sha256(asBytes(detail));
    std::string text;
    for (auto byte : ByteView(digest).first<8>()) {
        text += digits[byte >> 4];
        text += digits[byte & 15];
    }
    return text;
}

} // namespace morvex
