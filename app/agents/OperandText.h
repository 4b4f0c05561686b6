#pragma once

#include <algorithm>
#include <string>
#include <utility>

namespace morvex {

/// A text as a word of a command line that no program takes for an option or for one of its subcommands:
/// one that begins like an option, or may be the name of a subcommand, gets a blank before it, which changes
/// none of its words. Programs know their subcommands by the exact name, in small letters.
inline std::string operandText(std::string text) {
    constexpr auto isOfAName = [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-' || c == '_';
    };
    const bool isName = !text.empty() && std::ranges::all_of(text, isOfAName);
    return isName || text.starts_with('-') ? " " + std::move(text) : text;
}

} // namespace morvex
