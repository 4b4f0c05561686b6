#pragma once

#include "shared/base/Date.h"
#include "shared/base/Sentence.h"

#include <string>
#include <variant>

namespace morvex {

/// What is told of a phone that went away while its number was compared. It keeps nothing itself before its
/// person agrees too.
inline constexpr auto telefonMezitimOdesel =
    "Telefon mezitím odešel. Pokud párování vzdal, nepřipojí se a je potřeba ho spárovat znovu."_sentence;

/// Where the pairing stands, for the pairing view.
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
        std::string qr; ///< secret until it was used: it lets a phone join
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

    /// Null when it is another case.
    template <class Case> [[nodiscard]] const Case* as() const { return std::get_if<Case>(&value); }

    bool operator==(const StavParovani&) const = default;
};

} // namespace morvex
