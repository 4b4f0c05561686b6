#include "app/agents/SberatelZprav.h"

#include <utility>

namespace morvex {

namespace {

template <class Text> void keep(std::optional<Text>& kept, const std::optional<Text>& said) {
    if (said && !said->empty()) kept = said;
}

} // namespace

SberatelZprav::Relace SberatelZprav::add(const ZpravaAgenta& zprava) {
    std::lock_guard lock(zamek_);
    keep(posledniText_, zprava.text);
    keep(zaver_, zprava.zaver);
    keep(chyba_, zprava.chyba);
    keep(relace_, zprava.relace);
    const bool isNews =
        relace_ && knownSessions_.size() < mostSessions && knownSessions_.insert(*relace_).second;
    return isNews ? Relace::fresh : Relace::known;
}

Prubeh SberatelZprav::prubeh(VysledekProcesu vysledek) const {
    std::lock_guard lock(zamek_);
    return {relace_, posledniText_, zaver_, chyba_, std::move(vysledek)};
}

} // namespace morvex
