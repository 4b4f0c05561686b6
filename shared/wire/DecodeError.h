#pragma once

#include "shared/base/Sentence.h"

#include <string>

namespace morvex {

/// Why a text from outside is not the record that was expected.
struct DecodeError {
    enum class Reason {
        tooLong,       ///< longer than the caller allows
        notJson,       ///< breaks RFC 8259, or nests too deep; `found` is the place in bytes
        tooManyValues, ///< would need far more memory than its length justifies
        missing,       ///< a required field is not there, or null
        wrongType,     ///< `found` is the type that stands there
        unknownWord,   ///< a word that the enumeration does not have
        outOfRange,    ///< a number that the field cannot hold exactly
        badText,       ///< no date, UUID or base64 of the only form that is accepted
        caseCount,     ///< a tagged value without exactly one case
        unknownCase,   ///< a tagged value with a case of another version
    };

    Reason reason;
    std::string path; ///< the failing field, as `items[1].risk`; empty for the whole
    Sentence found;   ///< at most a short piece of what was read, or the name of its type

    [[nodiscard]] Sentence popis() const;
    bool operator==(const DecodeError&) const = default;
};

} // namespace morvex
