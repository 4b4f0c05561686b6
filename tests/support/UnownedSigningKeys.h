#pragma once

#include "shared/base/Bytes.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace morvex::test {

/// The encoding of an Ed25519 point, or 32 bytes that look like one.
using SigningPoint = std::array<std::uint8_t, 32>;

inline SigningPoint signingPoint(ByteView lowest, std::uint8_t rest, std::uint8_t last) {
    SigningPoint point;
    point.fill(rest);
    for (std::size_t place = 0; place < lowest.size(); ++place) point[place] = lowest[place];
    point.back() = last;
    return point;
}

/// The same y with the other sign of x.
inline SigningPoint mirrored(SigningPoint point) {
    point.back() ^= 0x80;
    return point;
}

/// The eight points of small order in the encoding of RFC 8032.
inline std::vector<SigningPoint> smallOrderSigningPoints() {
    const SigningPoint zero = signingPoint({}, 0, 0);
    // The y of points of order 8; the other one, `negative`, is p minus this.
    const SigningPoint eighth{0x26, 0xe8, 0x95, 0x8f, 0xc2, 0xb2, 0x27, 0xb0, 0x45, 0xc3, 0xf4,
                              0x89, 0xf2, 0xef, 0x98, 0xf0, 0xd5, 0xdf, 0xac, 0x05, 0xd3, 0xc6,
                              0x33, 0x39, 0xb1, 0x38, 0x02, 0x88, 0x6d, 0x53, 0xfc, 0x05};
    const SigningPoint negative{0xc7, 0x17, 0x6a, 0x70, 0x3d, 0x4d, 0xd8, 0x4f, 0xba, 0x3c, 0x0b,
                                0x76, 0x0d, 0x10, 0x67, 0x0f, 0x2a, 0x20, 0x53, 0xfa, 0x2c, 0x39,
                                0xcc, 0xc6, 0x4e, 0xc7, 0xfd, 0x77, 0x92, 0xac, 0x03, 0x7a};
    const std::uint8_t one = 0x01;
    const std::uint8_t minusOne = 0xec;
    return {signingPoint({&one, 1}, 0, 0),
            signingPoint({&minusOne, 1}, 0xff, 0x7f),
            zero,
            mirrored(zero),
            eighth,
            mirrored(eighth),
            negative,
            mirrored(negative)};
}

/// Every key that nobody owns: the points of small order in all their encodings, and each y from p to 2^255 -
/// 1.
inline std::vector<SigningPoint> unownedSigningKeys() {
    auto keys = smallOrderSigningPoints();
    keys.push_back(mirrored(keys[0]));
    keys.push_back(mirrored(keys[1]));
    for (int lowest = 0xed; lowest <= 0xff; ++lowest) {
        const auto byte = static_cast<std::uint8_t>(lowest);
        keys.push_back(signingPoint({&byte, 1}, 0xff, 0x7f));
        keys.push_back(signingPoint({&byte, 1}, 0xff, 0xff));
    }
    return keys;
}

/// Signatures that need no private key: S is 0 and R a point of small order. Under a key of small order, at
/// least one in eight messages is accepted with one of them (RFC 8032, section 5.1.7, without the check of
/// the key).
inline std::vector<Bytes> keylessSignatures() {
    std::vector<Bytes> signatures;
    for (const auto& point : smallOrderSigningPoints()) {
        signatures.emplace_back(point.begin(), point.end());
        signatures.back().resize(64);
    }
    return signatures;
}

} // namespace morvex::test
