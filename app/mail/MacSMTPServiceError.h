#pragma once

#include "shared/base/Sentence.h"

#include <string>
#include <variant>

namespace morvex {

/// Why a mail account could not be used.
struct MacSMTPServiceError {
    struct MissingPassword {
        bool operator==(const MissingPassword&) const = default;
    };

    struct NoAccount {
        bool operator==(const NoAccount&) const = default;
    };

    struct ChooseDefault {
        bool operator==(const ChooseDefault&) const = default;
    };

    struct DraftUnsupported {
        bool operator==(const DraftUnsupported&) const = default;
    };

    struct UnknownAccount {
        std::string name;
        bool operator==(const UnknownAccount&) const = default;
    };

    /// There is no message of that id.
    struct NoMessage {
        bool operator==(const NoMessage&) const = default;
    };

    std::variant<MissingPassword, NoAccount, ChooseDefault, DraftUnsupported, UnknownAccount, NoMessage>
        value;

    [[nodiscard]] Sentence popis() const;
    bool operator==(const MacSMTPServiceError&) const = default;
};

} // namespace morvex
