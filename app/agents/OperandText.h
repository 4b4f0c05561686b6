#pragma once

#include <algorithm>
#include <string>
#include <utility>

namespace morvex {

/// Changes a text so that no program takes it for an option or for one of its subcommands: a text that begins
/// like an option, or may be the name of a subcommand, gets a leading blank, which changes none of its words.
/// Programs match subcommands by their exact name, in lower case.
inline std::string operandText(std::string text) {
    constexpr auto isOfAName = [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-' || c == '_';
    };
    const bool isName = !text.empty() && std::ranges::all_of(text, isOfAName);
    return isName || text.starts_with('-') ? " " + std::move(text) : text;
}

} // namespace morvex
