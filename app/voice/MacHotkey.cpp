#include "app/voice/MacHotkey.h"

#include "foundation/Text.h"
#include "shared/wire/Describe.h"

#include <array>
#include <utility>

namespace morvex {

namespace {

constexpr std::uint16_t spaceKey = 49;
constexpr std::uint16_t returnKey = 36;

constexpr std::array<std::pair<std::uint64_t, std::string_view>, 4> symbols{{
    {MacHotkey::control, "⌃"},
    {MacHotkey::option, "⌥"},
    {MacHotkey::shift, "⇧"},
    {MacHotkey::command, "⌘"},
}};

} // namespace

void describe(auto& io, Is<MacHotkey> auto& hotkey) {
    io.required("kind", hotkey.kind);
    io.required("keyCode", hotkey.keyCode);
    io.required("modifiers", hotkey.modifiers);
    io.required("keyLabel", hotkey.keyLabel);
}

template struct Codec<MacHotkey>;

std::string MacHotkey::displayText() const {
    if (kind == Kind::function) return "fn";
    std::string text;
    for (auto [bit, symbol] : symbols)
        if (modifiers & bit) text += symbol;
    return text + keyLabel;
}

std::string MacHotkey::label(std::uint16_t keyCode, std::string_view characters) {
    if (keyCode == spaceKey) return "Space";
    if (keyCode == returnKey) return "Return";
    return upperCase(characters);
}

} // namespace morvex
