#include "shared/trust/SecretBytes.h"

#include <openssl/crypto.h>

namespace morvex {

void wipe(std::span<std::uint8_t> bytes) {
    OPENSSL_cleanse(bytes.data(), bytes.size());
}

} // namespace morvex
