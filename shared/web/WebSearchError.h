#pragma once

#include "shared/base/Sentence.h"

#include <string>
#include <variant>

namespace morvex {

/// Why a search on the web gave no answer.
struct WebSearchError {
    struct Service {
        Sentence message; ///< the service's own words, or its status
        bool operator==(const Service&) const = default;
    };

    struct MissingKey {
        bool operator==(const MissingKey&) const = default;
    };

    struct EmptyQuery {
        bool operator==(const EmptyQuery&) const = default;
    };

    struct InvalidResponse {
        bool operator==(const InvalidResponse&) const = default;
    };

    std::variant<Service, MissingKey, EmptyQuery, InvalidResponse> value;

    [[nodiscard]] Sentence popis() const;
    bool operator==(const WebSearchError&) const = default;
};

} // namespace morvex
