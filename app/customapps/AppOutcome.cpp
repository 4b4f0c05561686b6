#include "app/customapps/AppOutcome.h"

#include <utility>

namespace morvex {

Sentence AppOutcome::popis() const {
    if (isAsking) return "Zjišťuji nástroje…"_sentence;
    if (failure) return "Nepřipojeno: {duvod}"_sentence(*failure);
    auto connected = waiting > 0
                         ? "Připojeno · {pocet} nástrojů · {ceka} čeká na schválení · {doba} ms"_sentence(
                               tools, waiting, took.count())
                         : "Připojeno · {pocet} nástrojů · {doba} ms"_sentence(tools, took.count());
    if (leftOut == 0) return connected;
    return "{stav} · {pocet} nástrojů se nedá použít nebo se nevešlo"_sentence(std::move(connected), leftOut);
}

} // namespace morvex
