#pragma once

#include "shared/base/Sentence.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace morvex {

/// Why a file operation was refused or failed. `name` is always one path component, never the whole path.
struct SouboryChyba {
    struct MimoPovolene {
        std::string name;
        bool operator==(const MimoPovolene&) const = default;
    };

    struct ZakazanaCesta {
        std::string fragment;
        bool operator==(const ZakazanaCesta&) const = default;
    };

    struct NeniSoubor {
        std::string name;
        bool operator==(const NeniSoubor&) const = default;
    };

    struct PrilisVelky {
        std::string name;
        std::size_t limit = 0; ///< kB
        bool operator==(const PrilisVelky&) const = default;
    };

    struct UzExistuje {
        std::string name;
        bool operator==(const UzExistuje&) const = default;
    };

    struct WouldStartProgram {
        std::string name;
        bool operator==(const WouldStartProgram&) const = default;
    };

    struct TooMuchWritten {
        bool operator==(const TooMuchWritten&) const = default;
    };

    struct Selhalo {
        std::string text;
        bool operator==(const Selhalo&) const = default;
    };

    std::variant<MimoPovolene, ZakazanaCesta, NeniSoubor, PrilisVelky, UzExistuje, WouldStartProgram,
                 TooMuchWritten, Selhalo>
        kind;

    [[nodiscard]] Sentence popis() const;

    /// Whether it is certain that nothing was written.
    [[nodiscard]] bool wroteNothing() const { return !std::holds_alternative<Selhalo>(kind); }

    bool operator==(const SouboryChyba&) const = default;

    /// The folder is not known: `prompt` followed by the names to choose from, or a note that there is none.
    static SouboryChyba noFolder(std::string_view prompt, const std::vector<std::string>& aliasy);
};

} // namespace morvex
