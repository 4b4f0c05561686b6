#pragma once

#include <QString>

#include <string>

namespace morvex {

/// A sentence of the program in the language of its window. The key of every table is the Czech sentence;
/// what no table knows stays Czech.
///
/// Sentences with values in them are found too: numbers and names stand in the key as %1, %2, and so does the
/// rest behind the first ": ", " — " or ". ", which is looked up in its turn.
[[nodiscard]] QString localized(const std::string& sentence);

} // namespace morvex
