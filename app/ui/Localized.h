#pragma once

#include "shared/base/Sentence.h"

#include <QString>

namespace morvex {

/// A sentence in the language of the window. The key in every table is the Czech sentence with its
/// placeholders; sentences that no table has stay Czech. A text without placeholders is looked up too,
/// because a sentence that was stored in a file is read back as plain text.
[[nodiscard]] QString localized(const Sentence& sentence);

} // namespace morvex
