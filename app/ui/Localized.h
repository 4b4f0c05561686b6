#pragma once

#include "shared/base/Sentence.h"

#include <QString>

namespace morvex {

/// A sentence in the language of the window. The key of every table is the Czech sentence with its places;
/// what no table knows stays Czech. A text without places is looked up too: a sentence that was kept in a
/// file comes back as one.
[[nodiscard]] QString localized(const Sentence& sentence);

} // namespace morvex
