#pragma once

#include "shared/base/Date.h"
#include "shared/base/Sentence.h"
#include "shared/wire/DeviceRole.h"

#include <cstdint>
#include <string>
#include <variant>

namespace morvex {

/// The state of the link, for this computer's own interface. It never travels.
struct MacAvailability {
    struct NeplatneParovani {
        Sentence duvod;
        bool operator==(const NeplatneParovani&) const = default;
    };

    struct Spanek {
        Date od;
        bool operator==(const Spanek&) const = default;
    };

    struct Pripojuji {
        std::int64_t pokus = 0;
        double dalsiZa = 0; ///< seconds
        bool operator==(const Pripojuji&) const = default;
    };

    struct Preruseno {
        Sentence duvod;
        bool operator==(const Preruseno&) const = default;
    };

    struct Zaneprazdneny {
        std::string cim;
        bool operator==(const Zaneprazdneny&) const = default;
    };

    struct Nesparovano {
        bool operator==(const Nesparovano&) const = default;
    };

    struct Offline {
        bool operator==(const Offline&) const = default;
    };

    struct Pripraveny {
        bool operator==(const Pripraveny&) const = default;
    };

    std::variant<NeplatneParovani, Spanek, Pripojuji, Preruseno, Zaneprazdneny, Nesparovano, Offline,
                 Pripraveny>
        value;

    [[nodiscard]] Sentence popis(DeviceRole protejsek, Date now) const;
    /// True when the link can carry a request.
    [[nodiscard]] bool jePouzitelny() const;

    /// Null when the value holds another case.
    template <class Case> [[nodiscard]] const Case* as() const { return std::get_if<Case>(&value); }

    bool operator==(const MacAvailability&) const = default;
};

} // namespace morvex
