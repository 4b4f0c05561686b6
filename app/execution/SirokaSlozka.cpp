#include "app/execution/SirokaSlozka.h"

#include "foundation/Paths.h"

#include <utility>

namespace morvex {

Sentence SirokaSlozka::popis() const {
    switch (dosah) {
    case Dosah::disk:
        return "To je celý disk: telefon se pak dostane ke všemu, k čemu se tu dostaneš ty."_sentence;
    case Dosah::domov:
        return "To je tvoje domovská složka: telefon se pak dostane ke všem tvým souborům."_sentence;
    case Dosah::nadDomovem:
        return "V téhle složce leží tvoje domovská: telefon se pak dostane ke všem tvým souborům."_sentence;
    }
    std::unreachable();
}

std::optional<SirokaSlozka> SirokaSlozka::posoud(const std::string& slozka,
                                                 const StandardFolders& standardFolders) {
    const auto canonical = paths::resolved(slozka);
    if (!canonical) return std::nullopt;
    if (*canonical == "/") return SirokaSlozka{slozka, Dosah::disk};
    // The environment may name a home folder other than the account's.
    for (const auto& home : {standardFolders.home(), standardFolders.accountHome()}) {
        const auto domov = paths::resolved(home);
        if (domov == canonical) return SirokaSlozka{slozka, Dosah::domov};
        if (domov && domov->starts_with(*canonical + "/")) return SirokaSlozka{slozka, Dosah::nadDomovem};
    }
    return std::nullopt;
}

} // namespace morvex
