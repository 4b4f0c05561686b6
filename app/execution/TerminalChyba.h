#pragma once

#include "shared/base/Sentence.h"

#include <string>
#include <variant>

namespace morvex {

/// Why a command was not run.
struct TerminalChyba {
    struct ZakazanyProgram {
        std::string jmeno;
        bool operator==(const ZakazanyProgram&) const = default;
    };

    struct VyzadujePotvrzeni {
        std::string command; ///< such as `git push`
        bool operator==(const VyzadujePotvrzeni&) const = default;
    };

    struct MimoPovolene {
        std::string slozka; ///< as it was requested
        bool operator==(const MimoPovolene&) const = default;
    };

    struct PodezreleArgumenty {
        std::string duvod;
        bool operator==(const PodezreleArgumenty&) const = default;
    };

    std::variant<ZakazanyProgram, VyzadujePotvrzeni, MimoPovolene, PodezreleArgumenty> kind;

    [[nodiscard]] Sentence popis() const;
    bool operator==(const TerminalChyba&) const = default;
};

} // namespace morvex
