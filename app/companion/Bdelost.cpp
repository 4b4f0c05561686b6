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
    sleeps_ = services_.sleep.onSleep([this] { fallAsleep(); });
    wakes_ = services_.sleep.onWake([this] { wakeUp(); });
    stav_.naNapajeni = services_.power.onMains();
    services_.scope.spawn(watchPower());
    applyActivity();
}

void Bdelost::setSpoustetPoPrihlaseni(bool startsAtLogin) {
    auto changed = startsAtLogin ? services_.loginItem.enroll() : services_.loginItem.withdraw();
    if (!changed) logCause("changing the start at login", changed.error());
    stav_.potiz = changed ? std::nullopt
                          : std::optional("Spouštění po přihlášení se nepodařilo nastavit: {duvod}"_sentence(
                                changed.error().popis()));
    stav_.spoustetPoPrihlaseni = services_.loginItem.isEnabled();
}

void Bdelost::setDrzetVzhuru(bool keepAwake) {
    stav_.drzetVzhuru = keepAwake;
    services_.defaults.set(holdKey, keepAwake);
    applyActivity();
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

void Bdelost::allowSleep() {
    // After the wake the system prepares to wait for the next sleep, so a late call must not reach it.
    if (stav_.spi) services_.sleep.letSleep();
}

Task<void> Bdelost::watchPower() {
    while (co_await sleepFor(services_.clock, powerInterval, services_.scope.token())) readPower();
}

Task<void> Bdelost::limitWait(int spanek) {
    co_await sleepFor(services_.clock, longestDelayOfSleep, services_.scope.token());
    if (spanek == spanek_) allowSleep();
}

void Bdelost::readPower() {
    bool mains = services_.power.onMains();
    if (mains == stav_.naNapajeni) return;
    stav_.naNapajeni = mains;
    applyActivity();
}

void Bdelost::applyActivity() {
    aktivita_.reset();
    stav_.keepAwakeTrouble = std::nullopt;
    if (!stav_.drzetVzhuru || !stav_.naNapajeni) return;
    aktivita_ = services_.inhibitor.holdOffIdleSleep(holdReason, [this](const Error& error) {
        stav_.keepAwakeTrouble = "Počítač se nepodařilo udržet vzhůru: {duvod}"_sentence(error.popis());
    });
}

void Bdelost::fallAsleep() {
    stav_.spi = true;
    services_.scope.spawn(limitWait(++spanek_));
    if (!usnuti_.isHeard()) allowSleep();
    usnuti_.tell();
}

void Bdelost::wakeUp() {
    stav_.spi = false;
    readPower();
    probuzeni_.tell();
}

} // namespace morvex
