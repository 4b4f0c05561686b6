#include "shared/trust/UsableSigningKey.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace morvex {

namespace {

/// A number below 2^255, its lowest byte first (RFC 8032, section 5.1.2).
using Coordinate = std::array<std::uint8_t, 32>;

/// The largest y there is, p - 1; it is also the y of the point of order 2.
constexpr Coordinate largest = [] {
    Coordinate y{};
    y.fill(0xff);
    y.front() = 0xec;
    y.back() = 0x7f;
    return y;
}();

/// The y of each of the eight points whose order divides 8. Two points with the same y differ in the sign of
/// x.
constexpr std::array<Coordinate, 5> smallOrder{
    Coordinate{1}, // order 1
    largest,       // order 2
    Coordinate{0}, // order 4, two points; the two values below are order 8, two points each
    Coordinate{0x26, 0xe8, 0x95, 0x8f, 0xc2, 0xb2, 0x27, 0xb0, 0x45, 0xc3, 0xf4,
               0x89, 0xf2, 0xef, 0x98, 0xf0, 0xd5, 0xdf, 0xac, 0x05, 0xd3, 0xc6,
               0x33, 0x39, 0xb1, 0x38, 0x02, 0x88, 0x6d, 0x53, 0xfc, 0x05},
    Coordinate{0xc7, 0x17, 0x6a, 0x70, 0x3d, 0x4d, 0xd8, 0x4f, 0xba, 0x3c, 0x0b,
               0x76, 0x0d, 0x10, 0x67, 0x0f, 0x2a, 0x20, 0x53, 0xfa, 0x2c, 0x39,
               0xcc, 0xc6, 0x4e, 0xc7, 0xfd, 0x77, 0x92, 0xac, 0x03, 0x7a},
};

bool isLess(const Coordinate& left, const Coordinate& right) {
    return std::lexicographical_compare(left.rbegin(), left.rend(), right.rbegin(), right.rend());
}

} // namespace

bool isUsableSigningKey(ByteView publicKey) {
    Coordinate y{};
    if (publicKey.size() != y.size()) return false;
    std::ranges::copy(publicKey, y.begin());
    y.back() &= 0x7f;
    // The points with x = 0 are all of small order, so the sign of x need not be checked.
    return !isLess(largest, y) && std::ranges::find(smallOrder, y) == smallOrder.end();
}

} // namespace morvex
