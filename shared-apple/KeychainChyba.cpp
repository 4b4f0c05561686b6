#include "shared-apple/KeychainChyba.h"

#include <utility>

namespace morvex {

Sentence KeychainChyba::popis() const {
    const auto duvod = slova ? *slova : "kód {cislo}"_sentence(stav);
    switch (pokus) {
    case Pokus::cteni:
        return "Trezor odmítl čtení {ucet}: {duvod}"_sentence(ucet, duvod);
    case Pokus::zapis:
        return "Trezor odmítl zápis {ucet}: {duvod}"_sentence(ucet, duvod);
    case Pokus::mazani:
        return "Trezor odmítl mazání {ucet}: {duvod}"_sentence(ucet, duvod);
    }
    std::unreachable();
}

} // namespace morvex
