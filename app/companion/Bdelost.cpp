#include "app/companion/Bdelost.h"

#include "foundation/ProgramLog.h"

#include <utility>

namespace morvex {

namespace {

using namespace std::chrono_literals;

constexpr auto powerInterval = 60s;
constexpr auto longestDelayOfSleep = 3s;
const std::string holdKey = "bdelost.drzet";
const std::string holdReason = "Morvex for Mac má zůstat dostupný pro telefon.";

} // namespace

Bdelost::Bdelost(Services services) : services_(services) {
    stav_.drzetVzhuru = services_.defaults.boolean(holdKey).value_or(false);
    stav_.spoustetPoPrihlaseni = services_.loginItem.isEnabled();
    sleeps_ = services_.sleep.onSleep([this] { usnout(); });
    wakes_ = services_.sleep.onWake([this] { probuditSe(); });
    stav_.naNapajeni = services_.power.onMains();
    services_.scope.spawn(hlidatNapajeni());
    pouzitAktivitu();
}

void Bdelost::setSpoustetPoPrihlaseni(bool spoustet) {
    auto changed = spoustet ? services_.loginItem.enroll() : services_.loginItem.withdraw();
    if (!changed) logCause("changing the start at login", changed.error());
    stav_.potiz = changed ? std::nullopt
                          : std::optional("Spouštění po přihlášení se nepodařilo nastavit: {duvod}"_sentence(
                                changed.error().popis()));
    stav_.spoustetPoPrihlaseni = services_.loginItem.isEnabled();
}

void Bdelost::setDrzetVzhuru(bool drzet) {
    stav_.drzetVzhuru = drzet;
    services_.defaults.set(holdKey, drzet);
    pouzitAktivitu();
}

Sentence Bdelost::stavText() const {
    if (stav_.spi) return "Mac spí"_sentence;
    if (!stav_.drzetVzhuru) return "Po chvíli nečinnosti usne a přestane být dostupný"_sentence;
    if (stav_.naNapajeni) return "Zůstane vzhůru, dokud je v zásuvce"_sentence;
    return "Na baterii usne — držení vzhůru platí jen při napájení"_sentence;
}

Connection Bdelost::naUsnuti(std::function<void()> slot) {
    return usnuti_.connect(std::move(slot));
}

Connection Bdelost::naProbuzeni(std::function<void()> slot) {
    return probuzeni_.connect(std::move(slot));
}

void Bdelost::muzeUsnout() {
    // After the wake the system prepares to wait for the next sleep, so a late call must not reach it.
    if (stav_.spi) services_.sleep.letSleep();
}

Task<void> Bdelost::hlidatNapajeni() {
    while (co_await sleepFor(services_.clock, powerInterval, services_.scope.token())) precistNapajeni();
}

Task<void> Bdelost::omezitCekani(int spanek) {
    co_await sleepFor(services_.clock, longestDelayOfSleep, services_.scope.token());
    if (spanek == spanek_) muzeUsnout();
}

void Bdelost::precistNapajeni() {
    bool mains = services_.power.onMains();
    if (mains == stav_.naNapajeni) return;
    stav_.naNapajeni = mains;
    pouzitAktivitu();
}

void Bdelost::pouzitAktivitu() {
    aktivita_.reset();
    stav_.potizDrzeni = std::nullopt;
    if (!stav_.drzetVzhuru || !stav_.naNapajeni) return;
    aktivita_ = services_.inhibitor.holdOffIdleSleep(holdReason, [this](const Error& error) {
        stav_.potizDrzeni = "Počítač se nepodařilo udržet vzhůru: {duvod}"_sentence(error.popis());
    });
}

void Bdelost::usnout() {
    stav_.spi = true;
    services_.scope.spawn(omezitCekani(++spanek_));
    if (!usnuti_.isHeard()) muzeUsnout();
    usnuti_.tell();
}

void Bdelost::probuditSe() {
    stav_.spi = false;
    precistNapajeni();
    probuzeni_.tell();
}

} // namespace morvex
