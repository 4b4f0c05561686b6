#pragma once

#include "shared/base/Sentence.h"

#include <string>
#include <variant>

namespace morvex {

/// Why no account of Mail may be used.
struct MailAccountsError {
    struct NoAccountEnabled {
        bool operator==(const NoAccountEnabled&) const = default;
    };

    struct ChooseDefault {
        bool operator==(const ChooseDefault&) const = default;
    };

    struct AccountNotEnabled {
        std::string name; ///< as it was asked for
        bool operator==(const AccountNotEnabled&) const = default;
    };

    std::variant<NoAccountEnabled, ChooseDefault, AccountNotEnabled> kind;

    [[nodiscard]] Sentence popis() const;
    bool operator==(const MailAccountsError&) const = default;
};

} // namespace morvex
