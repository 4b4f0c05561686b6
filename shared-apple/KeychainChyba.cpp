#include "shared-apple/KeychainChyba.h"

#include <utility>

namespace morvex {

Sentence KeychainChyba::popis() const {
    const auto duvod = words ? *words : "kód {cislo}"_sentence(stav);
    switch (pokus) {
    case Pokus::reading:
        return "Trezor odmítl čtení {ucet}: {duvod}"_sentence(ucet, duvod);
    case Pokus::writing:
        return "Trezor odmítl zápis {ucet}: {duvod}"_sentence(ucet, duvod);
    case Pokus::erasing:
        return "Trezor odmítl mazání {ucet}: {duvod}"_sentence(ucet, duvod);
    }
    std::unreachable();
}

} // namespace morvex
