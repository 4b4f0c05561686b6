#pragma once

#include "shared/base/Sentence.h"

#include <string>

namespace morvex {

/// Why a text from outside is not the record that was expected.
struct DecodeError {
    enum class Reason {
        tooLong,       ///< longer than the caller allows
        notJson,       ///< violates RFC 8259, or is nested too deeply; `found` is the offset in bytes
        tooManyValues, ///< would need far more memory than its length justifies
        missing,       ///< a required field is absent or null
        wrongType,     ///< `found` is the type that was found
        unknownWord,   ///< not one of the words of the enumeration
        outOfRange,    ///< a number that the field cannot hold exactly
        badText,       ///< not a date, UUID or base64 text in the only accepted form
        caseCount,     ///< a tagged value that does not have exactly one case
        unknownCase,   ///< a tagged value with an unknown case, perhaps of another version
    };

    Reason reason;
    std::string path; ///< the failing field, such as `items[1].risk`; empty for the whole document
    Sentence found;   ///< at most a short piece of what was read, or the name of its type

    [[nodiscard]] Sentence popis() const;
    bool operator==(const DecodeError&) const = default;
};

} // namespace morvex
