#pragma once

#include <string>
#include <utility>

namespace morvex {

/// A text as a word of a command line that no program takes for an option: one that begins like an option
/// gets a blank before it, which changes none of its words.
inline std::string operandText(std::string text) {
    return text.starts_with('-') ? " " + std::move(text) : text;
}

} // namespace morvex
