#pragma once

#include "shared/base/Error.h"
#include "shared/base/Sentence.h"

namespace morvex {

/// A system call that failed: its errno.
struct SystemError {
    int code = 0;
    /// The words of its `SystemTrouble`. The system's own go to the log, see `logCause`.
    [[nodiscard]] Sentence popis() const;
    bool operator==(const SystemError&) const = default;
};

/// The errno of a `SystemError`; 0 for any other failure.
int systemCode(const Error& error);

/// Whether an errno of a look at a path tells that nothing is there, or can be at such a path. After any
/// other something may be.
bool saysMissing(int code);

} // namespace morvex
