#include "shared/trust/Crypto.h"

#include "shared/base/Require.h"
#include "shared/trust/CryptoError.h"
#include "shared/trust/UsableSigningKey.h"

#include <openssl/core_names.h>
#include <openssl/err.h>
#include <openssl/evp.h>
#include <openssl/kdf.h>
#include <openssl/params.h>
#include <openssl/rand.h>

#include <limits>
#include <memory>

namespace morvex {

namespace {

template <auto Free> struct Freeing {
    template <class T> void operator()(T* object) const { Free(object); }
};

using Key = std::unique_ptr<EVP_PKEY, Freeing<EVP_PKEY_free>>;
using KeyContext = std::unique_ptr<EVP_PKEY_CTX, Freeing<EVP_PKEY_CTX_free>>;
using DigestContext = std::unique_ptr<EVP_MD_CTX, Freeing<EVP_MD_CTX_free>>;
using KdfContext = std::unique_ptr<EVP_KDF_CTX, Freeing<EVP_KDF_CTX_free>>;
using CipherContext = std::unique_ptr<EVP_CIPHER_CTX, Freeing<EVP_CIPHER_CTX_free>>;

// Looking up an algorithm by name costs more than processing a short message, so each is looked up once and
// kept until the process ends.
struct Algorithms {
    EVP_MD* sha256 = EVP_MD_fetch(nullptr, "SHA256", nullptr);
    EVP_KDF* hkdf = EVP_KDF_fetch(nullptr, "HKDF", nullptr);
    EVP_CIPHER* chacha = EVP_CIPHER_fetch(nullptr, "ChaCha20-Poly1305", nullptr);

    static const Algorithms& get() {
        static const Algorithms algorithms;
        require(algorithms.sha256 && algorithms.hkdf && algorithms.chacha,
                "OpenSSL lacks SHA-256, HKDF or ChaCha20-Poly1305");
        return algorithms;
    }
};

// Refused input must not leave its error in the thread's error queue, where TLS would take it for its own.
class ErrorScope {
  public:
    ErrorScope() { ERR_set_mark(); }

    ~ErrorScope() { ERR_pop_to_mark(); }

    ErrorScope(const ErrorScope&) = delete;
    ErrorScope& operator=(const ErrorScope&) = delete;
};

Key privateKeyOf(const char* algorithm, KeyView bytes) {
    Key key(EVP_PKEY_new_raw_private_key_ex(nullptr, algorithm, nullptr, bytes.data(), bytes.size()));
    require(key != nullptr, "OpenSSL makes no private key from 32 bytes");
    return key;
}

RawKey publicKeyOf(const char* algorithm, KeyView privateKey) {
    RawKey raw;
    std::size_t size = raw.size();
    auto key = privateKeyOf(algorithm, privateKey);
    require(EVP_PKEY_get_raw_public_key(key.get(), raw.data(), &size) == 1 && size == raw.size(),
            "OpenSSL gives no public half of a key");
    return raw;
}

bool fitsOneOperation(ByteView bytes) {
    return bytes.size() <= static_cast<std::size_t>(std::numeric_limits<int>::max());
}

struct Direction {
    decltype(&EVP_EncryptInit_ex2) init;
    decltype(&EVP_EncryptUpdate) update;
};

constexpr Direction sealing{EVP_EncryptInit_ex2, EVP_EncryptUpdate};
constexpr Direction opening{EVP_DecryptInit_ex2, EVP_DecryptUpdate};

CipherContext cipherContext(const Direction& direction, KeyView key, ByteView nonce) {
    CipherContext context(EVP_CIPHER_CTX_new());
    if (!context ||
        direction.init(context.get(), Algorithms::get().chacha, key.data(), nonce.data(), nullptr) != 1)
        return nullptr;
    return context;
}

// Without `output` the bytes are associated data. An empty input is skipped, since the library would take it
// for the end.
bool feed(EVP_CIPHER_CTX* context, const Direction& direction, ByteView input, std::uint8_t* output) {
    int written = 0;
    return input.empty() ||
           direction.update(context, output, &written, input.data(), static_cast<int>(input.size())) == 1;
}

} // namespace

void fillRandom(std::span<std::uint8_t> bytes) {
    require(RAND_priv_bytes_ex(nullptr, bytes.data(), bytes.size(), 0) == 1,
            "the system gives no random bytes");
}

Digest sha256(ByteView bytes) {
    Digest digest;
    require(EVP_Digest(bytes.data(), bytes.size(), digest.data(), nullptr, Algorithms::get().sha256,
                       nullptr) == 1,
            "OpenSSL does not compute SHA-256");
    return digest;
}

void detail::hkdfSha256(ByteView keyMaterial, ByteView salt, ByteView info, std::span<std::uint8_t> output) {
    // The library refuses an empty salt whose pointer is null.
    std::uint8_t nothing = 0;
    auto bytes = [&nothing](const char* name, ByteView view) {
        auto* data = view.empty() ? &nothing : const_cast<std::uint8_t*>(view.data());
        return OSSL_PARAM_construct_octet_string(name, data, view.size());
    };
    char digest[] = "SHA256";
    const OSSL_PARAM parameters[] = {OSSL_PARAM_construct_utf8_string(OSSL_KDF_PARAM_DIGEST, digest, 0),
                                     bytes(OSSL_KDF_PARAM_KEY, keyMaterial), bytes(OSSL_KDF_PARAM_SALT, salt),
                                     bytes(OSSL_KDF_PARAM_INFO, info), OSSL_PARAM_construct_end()};
    KdfContext context(EVP_KDF_CTX_new(Algorithms::get().hkdf));
    require(context && EVP_KDF_derive(context.get(), output.data(), output.size(), parameters) == 1,
            "OpenSSL does not compute HKDF");
}

RawKey ed25519PublicKey(KeyView privateKey) {
    return publicKeyOf("ED25519", privateKey);
}

Bytes ed25519Sign(ByteView message, KeyView privateKey) {
    Bytes signature(64);
    std::size_t size = signature.size();
    auto key = privateKeyOf("ED25519", privateKey);
    DigestContext context(EVP_MD_CTX_new());
    require(context && EVP_DigestSignInit(context.get(), nullptr, nullptr, nullptr, key.get()) == 1 &&
                EVP_DigestSign(context.get(), signature.data(), &size, message.data(), message.size()) == 1 &&
                size == signature.size(),
            "OpenSSL does not sign with Ed25519");
    return signature;
}

bool ed25519Verify(ByteView signature, ByteView message, ByteView publicKey) {
    ErrorScope errors;
    // The library would also verify signatures under keys of small order.
    if (!isUsableSigningKey(publicKey)) return false;
    Key key(EVP_PKEY_new_raw_public_key_ex(nullptr, "ED25519", nullptr, publicKey.data(), publicKey.size()));
    DigestContext context(EVP_MD_CTX_new());
    return key && context && EVP_DigestVerifyInit(context.get(), nullptr, nullptr, nullptr, key.get()) == 1 &&
           EVP_DigestVerify(context.get(), signature.data(), signature.size(), message.data(),
                            message.size()) == 1;
}

RawKey x25519PublicKey(KeyView privateKey) {
    return publicKeyOf("X25519", privateKey);
}

Result<SecretKeyBytes> x25519(KeyView privateKey, KeyView peerPublicKey) {
    ErrorScope errors;
    auto own = privateKeyOf("X25519", privateKey);
    Key peer(EVP_PKEY_new_raw_public_key_ex(nullptr, "X25519", nullptr, peerPublicKey.data(),
                                            peerPublicKey.size()));
    KeyContext context(EVP_PKEY_CTX_new_from_pkey(nullptr, own.get(), nullptr));
    if (!peer || !context || EVP_PKEY_derive_init(context.get()) != 1 ||
        EVP_PKEY_derive_set_peer(context.get(), peer.get()) != 1)
        return fail(CryptoError{CryptoFailure::libraryFailed});
    SecretKeyBytes shared;
    std::size_t size = keySize;
    // The library refuses an all-zero secret.
    if (EVP_PKEY_derive(context.get(), shared.writable().data(), &size) != 1 || size != keySize)
        return fail(CryptoError{CryptoFailure::refusedKey});
    return shared;
}

Result<SealedBytes> chachaSeal(KeyView key, ByteView nonce, ByteView associatedData, ByteView plaintext) {
    ErrorScope errors;
    if (nonce.size() != nonceSize) return fail(CryptoError{CryptoFailure::wrongNonce});
    if (!fitsOneOperation(plaintext) || !fitsOneOperation(associatedData))
        return fail(CryptoError{CryptoFailure::tooLong});
    SealedBytes sealed{Bytes(plaintext.size()), Bytes(tagSize)};
    auto context = cipherContext(sealing, key, nonce);
    int written = 0;
    if (!context || !feed(context.get(), sealing, associatedData, nullptr) ||
        !feed(context.get(), sealing, plaintext, sealed.ciphertext.data()) ||
        EVP_EncryptFinal_ex(context.get(), nullptr, &written) != 1 ||
        EVP_CIPHER_CTX_ctrl(context.get(), EVP_CTRL_AEAD_GET_TAG, tagSize, sealed.tag.data()) != 1)
        return fail(CryptoError{CryptoFailure::libraryFailed});
    return sealed;
}

Result<Bytes> chachaOpen(KeyView key, ByteView nonce, ByteView associatedData, ByteView ciphertext,
                         ByteView tag) {
    ErrorScope errors;
    if (nonce.size() != nonceSize) return fail(CryptoError{CryptoFailure::wrongNonce});
    if (tag.size() != tagSize) return fail(CryptoError{CryptoFailure::wrongTag});
    if (!fitsOneOperation(ciphertext) || !fitsOneOperation(associatedData))
        return fail(CryptoError{CryptoFailure::tooLong});
    Bytes plaintext(ciphertext.size());
    auto context = cipherContext(opening, key, nonce);
    int written = 0;
    if (!context ||
        EVP_CIPHER_CTX_ctrl(context.get(), EVP_CTRL_AEAD_SET_TAG, tagSize,
                            const_cast<std::uint8_t*>(tag.data())) != 1 ||
        !feed(context.get(), opening, associatedData, nullptr) ||
        !feed(context.get(), opening, ciphertext, plaintext.data()))
        return fail(CryptoError{CryptoFailure::libraryFailed});
    if (EVP_DecryptFinal_ex(context.get(), nullptr, &written) != 1)
        return fail(CryptoError{CryptoFailure::unverifiable});
    return plaintext;
}

} // namespace morvex
