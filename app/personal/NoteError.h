#pragma once

#include "shared/base/Sentence.h"

namespace morvex {

/// Why the notes store refused a change.
struct NoteError {
    enum Case {
        missingData, ///< title or body is empty
        notFound,    ///< no note has this title
    };

    Case kind;

    [[nodiscard]] Sentence popis() const;
    bool operator==(const NoteError&) const = default;
};

} // namespace morvex
