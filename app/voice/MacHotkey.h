#pragma once

#include "shared/wire/Codec.h"
#include "shared/wire/RawValues.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace morvex {

/// The global shortcut of the voice assistant, as it was recorded.
struct MacHotkey {
    enum class Kind { function, key };

    /// The bits of `modifiers`, the same on every system.
    static constexpr std::uint64_t shift = 1U << 17;
    static constexpr std::uint64_t control = 1U << 18;
    static constexpr std::uint64_t option = 1U << 19;
    static constexpr std::uint64_t command = 1U << 20;

    Kind kind = Kind::function;
    std::uint16_t keyCode = 0; ///< virtual key code of a Mac; 0 with `function`
    std::uint64_t modifiers = 0;
    std::string keyLabel = "fn";

    /// "fn", or the symbols of the modifiers directly before the label.
    [[nodiscard]] std::string displayText() const;

    /// The name of a recorded key: by its code if that is known, otherwise by the characters it gives without
    /// modifiers.
    static std::string label(std::uint16_t keyCode, std::string_view characters);

    bool operator==(const MacHotkey&) const = default;
};

template <> inline constexpr std::array<std::string_view, 2> rawValues<MacHotkey::Kind>{"function", "key"};

extern template struct Codec<MacHotkey>;

} // namespace morvex
