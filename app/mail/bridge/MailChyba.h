#pragma once

#include "shared/base/Sentence.h"

#include <variant>

namespace morvex {

/// Why Mail did not do what a script asked of it.
struct MailChyba {
    struct Selhalo {
        Sentence text; ///< the words of Mail or of the script
        bool operator==(const Selhalo&) const = default;
    };

    struct Nepovoleno {
        bool operator==(const Nepovoleno&) const = default;
    };

    struct Neodpovedel {
        bool operator==(const Neodpovedel&) const = default;
    };

    struct AppleMailBezUctu {
        bool operator==(const AppleMailBezUctu&) const = default;
    };

    struct NepodporovaneRozhrani {
        bool operator==(const NepodporovaneRozhrani&) const = default;
    };

    /// This system has no program that runs scripts for Mail.
    struct OnlyOnMac {
        bool operator==(const OnlyOnMac&) const = default;
    };

    std::variant<Selhalo, Nepovoleno, Neodpovedel, AppleMailBezUctu, NepodporovaneRozhrani, OnlyOnMac> kind;

    [[nodiscard]] Sentence popis() const;
    bool operator==(const MailChyba&) const = default;
};

} // namespace morvex
