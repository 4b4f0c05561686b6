#pragma once

#include <array>
#include <optional>
#include <string_view>
#include <type_traits>

namespace morvex {

/// The wire words of an enumeration, in the order of its cases. The specialisation is beside the enumeration.
template <class E> inline constexpr std::array<std::string_view, 0> rawValues{};

template <class E>
concept WordEnumeration = std::is_enum_v<E> && !rawValues<E>.empty();

template <WordEnumeration E> constexpr std::string_view rawValue(E value) {
    return rawValues<E>[static_cast<std::size_t>(value)];
}

template <WordEnumeration E> constexpr std::optional<E> fromRawValue(std::string_view word) {
    for (std::size_t index = 0; index < rawValues<E>.size(); ++index)
        if (rawValues<E>[index] == word) return static_cast<E>(index);
    return std::nullopt;
}

} // namespace morvex
