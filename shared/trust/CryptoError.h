#pragma once

#include "shared/base/Sentence.h"

namespace morvex {

/// Why a cryptographic operation refused its input.
enum class CryptoFailure {
    refusedKey,    ///< the peer's public key leads to a secret that everybody knows, or nobody can own it
    wrongNonce,    ///< the nonce does not have 12 bytes
    wrongTag,      ///< the authentication tag does not have 16 bytes
    unverifiable,  ///< authentication failed
    tooLong,       ///< 2 GiB or more, which the library cannot process in one operation
    libraryFailed, ///< the library itself failed
};

struct CryptoError {
    CryptoFailure failure;

    [[nodiscard]] Sentence popis() const;
    bool operator==(const CryptoError&) const = default;
};

} // namespace morvex
