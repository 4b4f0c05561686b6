#include "app/console/ConsolePairing.h"

#include "app/companion/CompanionState.h"
#include "app/companion/PairingFlow.h"
#include "app/console/QrBlocks.h"
#include "shared-apple/RelayAddress.h"

namespace morvex {

ConsolePairing::ConsolePairing(Companion& companion, const ConsoleOutput& output, Pictures pictures)
    : companion_(companion),
      output_(output),
      pictures_(pictures),
      notifier_(companion.stav().parovani.addNotifier([this] { tell(); })) {}

void ConsolePairing::tell() {
    const auto& pairing = companion_.stav().parovani.value();
    if (pairing.as<StavParovani::Zakladam>()) output_.line("Párování: zakládám pár u relaye…");
    if (const auto* failed = pairing.as<StavParovani::Chyba>())
        output_.line("Párování: " + failed->text.czech());
    if (pairing.as<StavParovani::Necinne>() && !companion_.parovani().awaitsKeys())
        output_.line("Párování: nic neprobíhá");
    if (const auto* waiting = pairing.as<StavParovani::CekamNaTelefon>()) {
        output_.line("Kód pro telefon, platí do " + formatDate(waiting->platiDo) + ":");
        output_.line(waiting->qr);
        if (pictures_ == Pictures::codes) output_.picture(qrBlocks(waiting->qr));
    }
    if (const auto* compare = pairing.as<StavParovani::OverCislo>()) {
        if (shownNumber_.empty()) shownNumber_ = compare->cislo;
        show(*compare);
    }
}

void ConsolePairing::show(const StavParovani::OverCislo& compare) const {
    output_.line("Číslo k porovnání: " + compare.cislo);
    output_.line("Je na telefonu stejné? Odpověz „souhlasi“ nebo „neshoduje“.");
}

void ConsolePairing::lineTyped() {
    const auto* compare = companion_.stav().parovani.value().as<StavParovani::OverCislo>();
    shownNumber_ = compare ? compare->cislo : "";
}

void ConsolePairing::begin() {
    const auto& state = companion_.stav();
    if (state.keys.value().kind != KeysState::Case::present) output_.line(tryingKeys);
    if (state.parovani.value().as<StavParovani::Zakladam>())
        return output_.line("Pár se u relaye už zakládá.");
    companion_.parovani().zacitParovani();
}

void ConsolePairing::judge(Verdict verdict) {
    const auto* compare = companion_.stav().parovani.value().as<StavParovani::OverCislo>();
    if (!compare) return output_.line("Žádné číslo teď k porovnání není.");
    if (verdict == Verdict::different) return companion_.parovani().odmitnoutCislo();
    if (compare->cislo != shownNumber_) {
        output_.line("Číslo je mezitím jiné.");
        return show(*compare);
    }
    output_.line("Ukládám párování.");
    companion_.parovani().potvrditCislo(shownNumber_);
}

void ConsolePairing::cancel() {
    const bool isIdle = companion_.stav().parovani.value().as<StavParovani::Necinne>();
    if (isIdle && !companion_.parovani().awaitsKeys()) return output_.line("Žádné párování neprobíhá.");
    companion_.parovani().zrusitParovani();
    if (isIdle) tell();
}

void ConsolePairing::unpair() {
    const auto& peer = companion_.stav().protejsek;
    if (!peer.value()) return output_.line("Žádný telefon spárovaný není.");
    companion_.parovani().odvolat();
    if (peer.value()) output_.line(RelayAddress::keptOneIsUnusable);
}

} // namespace morvex
