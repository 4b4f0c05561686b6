#pragma once

#include "shared/base/Sentence.h"

#include <string>
#include <variant>

namespace morvex {

/// Why a custom app could not be saved or could not do its work.
struct ServiceError {
    struct Http {
        int code = 0;
        bool operator==(const Http&) const = default;
    };

    struct Server {
        std::string message; ///< the server's own words
        bool operator==(const Server&) const = default;
    };

    struct MissingName {
        bool operator==(const MissingName&) const = default;
    };

    struct InvalidAddress {
        bool operator==(const InvalidAddress&) const = default;
    };

    struct InvalidResponse {
        bool operator==(const InvalidResponse&) const = default;
    };

    struct Authentication {
        bool operator==(const Authentication&) const = default;
    };

    std::variant<Http, Server, MissingName, InvalidAddress, InvalidResponse, Authentication> value;

    [[nodiscard]] Sentence popis() const;
    bool operator==(const ServiceError&) const = default;
};

} // namespace morvex
