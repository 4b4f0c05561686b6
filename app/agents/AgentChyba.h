#pragma once

#include "shared/base/Sentence.h"

#include <string>
#include <variant>

namespace morvex {

/// Why a task of an agent was not started.
struct AgentChyba {
    struct Zaneprazdneno {
        std::string nastroj; ///< the agent that is busy
        bool operator==(const Zaneprazdneno&) const = default;
    };

    struct NeznamyNastroj {
        std::string nastroj;
        bool operator==(const NeznamyNastroj&) const = default;
    };

    struct Nenainstalovano {
        Sentence zprava;
        bool operator==(const Nenainstalovano&) const = default;
    };

    struct SlozkaNeexistuje {
        std::string cesta;
        bool operator==(const SlozkaNeexistuje&) const = default;
    };

    struct FolderNoLongerAllowed {
        std::string cesta;
        bool operator==(const FolderNoLongerAllowed&) const = default;
    };

    struct PrazdnaInstrukce {
        bool operator==(const PrazdnaInstrukce&) const = default;
    };

    std::variant<Zaneprazdneno, NeznamyNastroj, Nenainstalovano, SlozkaNeexistuje, FolderNoLongerAllowed,
                 PrazdnaInstrukce>
        kind;

    [[nodiscard]] Sentence popis() const;
    bool operator==(const AgentChyba&) const = default;
};

} // namespace morvex
