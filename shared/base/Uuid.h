#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace morvex {

/// A UUID (RFC 9562). Read in either case, written in upper case, always in the form 8-4-4-4-12.
struct Uuid {
    std::array<std::uint8_t, 16> bytes{};

    /// Makes a version 4 UUID from 16 random bytes; sets the version and variant bits.
    static Uuid fromRandom(std::array<std::uint8_t, 16> random);
    static std::optional<Uuid> parse(std::string_view text);

    [[nodiscard]] std::string text() const;
    auto operator<=>(const Uuid&) const = default;
};

} // namespace morvex
