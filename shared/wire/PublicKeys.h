#pragma once

#include "shared/base/Bytes.h"
#include "shared/base/Error.h"
#include "shared/base/Sentence.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

namespace morvex {

/// Why a public key cannot be used.
struct KryptoChyba {
    struct SpatnaDelkaKlice {
        std::size_t ocekavano = 0;
        std::size_t dostal = 0;
        bool operator==(const SpatnaDelkaKlice&) const = default;
    };

    struct NeplatnyKlic {
        Sentence text;
        bool operator==(const NeplatnyKlic&) const = default;
    };

    struct NesedicOtisk {
        bool operator==(const NesedicOtisk&) const = default;
    };

    std::variant<SpatnaDelkaKlice, NeplatnyKlic, NesedicOtisk> value;

    [[nodiscard]] Sentence popis() const;

    /// Null when the value holds another case.
    template <class Case> [[nodiscard]] const Case* as() const { return std::get_if<Case>(&value); }

    bool operator==(const KryptoChyba&) const = default;
};

/// A raw public key of Curve25519. On the wire it is one string of standard base64. Whether the bytes are a
/// point that the curve accepts shows only when the key is used.
template <class Role> struct PublicKey {
    static constexpr std::size_t size = 32;

    std::array<std::uint8_t, size> raw{};

    /// Fails with `KryptoChyba` unless `bytes` has 32 bytes.
    static Result<PublicKey> fromRaw(ByteView bytes);
    /// From base64. Fails with `KryptoChyba`.
    static Result<PublicKey> parse(std::string_view base64);

    /// The base64 form.
    [[nodiscard]] std::string text() const;
    auto operator<=>(const PublicKey&) const = default;
};

/// Ed25519 (RFC 8032).
using SigningPublicKey = PublicKey<struct SigningRole>;
/// X25519 (RFC 7748).
using AgreementPublicKey = PublicKey<struct AgreementRole>;

extern template struct PublicKey<SigningRole>;
extern template struct PublicKey<AgreementRole>;

} // namespace morvex
