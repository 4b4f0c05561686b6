#include "app/execution/SouboryChyba.h"

#include "foundation/Text.h"
#include "shared/wire/TalkSpanError.h"

namespace morvex {

namespace {

struct Popis {
    std::string operator()(const SouboryChyba::MimoPovolene& chyba) const {
        return TalkSpanError{TalkSpanError::OutsideAllowedFolders{chyba.name}}.popis();
    }

    std::string operator()(const SouboryChyba::ZakazanaCesta& chyba) const {
        return "Na " + chyba.fragment + " nesahám za žádných okolností — jsou to přihlašovací údaje.";
    }

    std::string operator()(const SouboryChyba::NeniSoubor& chyba) const {
        return chyba.name + " není soubor.";
    }

    std::string operator()(const SouboryChyba::PrilisVelky& chyba) const {
        return "Soubor " + chyba.name + " má přes " + std::to_string(chyba.limit) +
               " kB. Na čtení hlasem je to moc; řekni, co v něm hledat.";
    }

    std::string operator()(const SouboryChyba::UzExistuje& chyba) const {
        return "Soubor " + chyba.name + " už existuje. Přepsání musíš potvrdit — to zatím neumím.";
    }

    std::string operator()(const SouboryChyba::SpustilByProgram& chyba) const {
        return "Soubor " + chyba.name + " by mohl sám spustit program. Takový nezapisuju.";
    }

    std::string operator()(const SouboryChyba::PrilisMnohoZapsano&) const {
        return "Za poslední hodinu už bylo zapsáno tolik, kolik smí, tedy 1 GB. Zkus to později.";
    }

    std::string operator()(const SouboryChyba::Selhalo& chyba) const { return chyba.text; }
};

} // namespace

std::string SouboryChyba::popis() const {
    return std::visit(Popis{}, pripad);
}

SouboryChyba SouboryChyba::bezSlozky(std::string_view vyzva, const std::vector<std::string>& aliasy) {
    if (aliasy.empty()) return {Selhalo{"Na Macu není povolená žádná složka."}};
    return {Selhalo{std::string(vyzva) + " Povolené: " + join(aliasy, ", ") + "."}};
}

} // namespace morvex
