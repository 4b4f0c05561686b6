#include "app/customapps/AppOutcome.h"

namespace morvex {

Sentence AppOutcome::popis() const {
    if (isAsking) return "Zjišťuji nástroje…"_sentence;
    if (failure) return "Nepřipojeno: {duvod}"_sentence(*failure);
    if (waiting > 0)
        return "Připojeno · {pocet} nástrojů · {ceka} čeká na schválení · {doba} ms"_sentence(tools, waiting,
                                                                                              took.count());
    return "Připojeno · {pocet} nástrojů · {doba} ms"_sentence(tools, took.count());
}

} // namespace morvex
