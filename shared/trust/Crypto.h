#pragma once

#include "shared/base/Bytes.h"
#include "shared/base/Error.h"
#include "shared/trust/SecretBytes.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <tuple>

/// The cryptography of the program: the only wrapper around OpenSSL. All functions are stateless and may be
/// called from any thread. Functions that depend on bytes from outside return a `Result` (whose cause is a
/// `CryptoError`) or false. What can fail only when the machine has no memory or no randomness ends the
/// process, since nothing safe could follow.
namespace morvex {

inline constexpr std::size_t keySize = 32;
inline constexpr std::size_t nonceSize = 12;
inline constexpr std::size_t tagSize = 16;

using Digest = std::array<std::uint8_t, 32>;
using RawKey = std::array<std::uint8_t, keySize>;
using SecretKeyBytes = SecretBytes<keySize>;
using KeyView = std::span<const std::uint8_t, keySize>;

/// Uses the random generator of the system.
void fillRandom(std::span<std::uint8_t> bytes);

/// SHA-256 (FIPS 180-4).
Digest sha256(ByteView bytes);

namespace detail {
void hkdfSha256(ByteView keyMaterial, ByteView salt, ByteView info, std::span<std::uint8_t> output);
}

/// HKDF with SHA-256 (RFC 5869); an empty salt stands for 32 zero bytes.
template <std::size_t Size>
    requires(Size <= 255 * std::tuple_size_v<Digest>)
SecretBytes<Size> hkdfSha256(ByteView keyMaterial, ByteView salt, ByteView info) {
    SecretBytes<Size> output;
    detail::hkdfSha256(keyMaterial, salt, info, output.writable());
    return output;
}

/// Ed25519 (RFC 8032).
RawKey ed25519PublicKey(KeyView privateKey);
Bytes ed25519Sign(ByteView message, KeyView privateKey);
/// Returns false, never an error, for a key or signature of a wrong length, for one that is not a point of
/// the curve and for a key that nobody can own (see `isUsableSigningKey`).
bool ed25519Verify(ByteView signature, ByteView message, ByteView publicKey);

/// X25519 (RFC 7748).
RawKey x25519PublicKey(KeyView privateKey);
/// Refuses the public keys whose shared secret is zero for every private key (`CryptoFailure::refusedKey`).
Result<SecretKeyBytes> x25519(KeyView privateKey, KeyView peerPublicKey);

struct SealedBytes {
    Bytes ciphertext;
    Bytes tag;
};

/// ChaCha20-Poly1305 (RFC 8439). A nonce must never serve twice under one key.
Result<SealedBytes> chachaSeal(KeyView key, ByteView nonce, ByteView associatedData, ByteView plaintext);
Result<Bytes> chachaOpen(KeyView key, ByteView nonce, ByteView associatedData, ByteView ciphertext,
                         ByteView tag);

} // namespace morvex
