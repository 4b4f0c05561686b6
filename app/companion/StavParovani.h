#pragma once

#include "shared/base/Date.h"
#include "shared/base/Sentence.h"

#include <string>
#include <variant>

namespace morvex {

/// Shown when a phone went away while its number was being compared. The phone stores nothing before its own
/// user has agreed too.
inline constexpr auto phoneLeftMeanwhile =
    "Telefon mezitím odešel. Pokud párování vzdal, nepřipojí se a je potřeba ho spárovat znovu."_sentence;

/// The state of the pairing, for the pairing view.
struct StavParovani {
    /// Nothing is going on.
    struct Necinne {
        bool operator==(const Necinne&) const = default;
    };

    /// The pair is being created at the relay.
    struct Zakladam {
        bool operator==(const Zakladam&) const = default;
    };

    /// The QR code is on screen until `platiDo`.
    struct CekamNaTelefon {
        std::string qr; ///< secret until it has been used: it lets a phone join
        Date platiDo;
        bool operator==(const CekamNaTelefon&) const = default;
    };

    /// The phone has answered; the user compares this number.
    struct OverCislo {
        std::string cislo;
        bool operator==(const OverCislo&) const = default;
    };

    struct Chyba {
        Sentence text;
        bool operator==(const Chyba&) const = default;
    };

    std::variant<Necinne, Zakladam, CekamNaTelefon, OverCislo, Chyba> value;

    /// Null for any other case.
    template <class Case> [[nodiscard]] const Case* as() const { return std::get_if<Case>(&value); }

    bool operator==(const StavParovani&) const = default;
};

} // namespace morvex
