#include "app/console/ConsoleFolders.h"

#include "foundation/Paths.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace morvex {

ConsoleFolders::ConsoleFolders(Surroundings surroundings) : surroundings_(std::move(surroundings)) {
    asked_ = surroundings_.slozky.priOtazce([this] { printQuestion(); });
}

void ConsoleFolders::print() const {
    const auto& slozky = surroundings_.slozky;
    const auto& povolene = slozky.povolene();
    if (povolene.empty()) surroundings_.output.line("Složky: žádná není povolená");
    const auto names = slozky.aliasy();
    for (std::size_t at = 0; at < povolene.size(); ++at) {
        const bool needsRenewal = slozky.vyzadujiObnoveni().contains(povolene[at]);
        const bool isBare = names[at] == paths::lastComponent(povolene[at]);
        surroundings_.output.line("Složka: " + povolene[at] + (isBare ? "" : ", jménem " + names[at]) +
                                  (needsRenewal ? " (povol ji znovu)" : ""));
    }
}

void ConsoleFolders::allow(const std::string& path) {
    auto expanded = expandingTilde(path, surroundings_.folders);
    if (!expanded.starts_with('/')) return surroundings_.output.line("Cesta ke složce začíná „/“ nebo „~“.");
    surroundings_.picker.choose(expanded);
    surroundings_.scope.spawn(allowAndShow());
}

Task<void> ConsoleFolders::allowAndShow() {
    co_await surroundings_.slozky.pridat();
    if (const auto& failure = surroundings_.slozky.chybaOpravneni()) surroundings_.output.line(*failure);
    print();
}

void ConsoleFolders::disallow(const std::string& path) {
    auto& slozky = surroundings_.slozky;
    auto expanded = paths::standardized(expandingTilde(path, surroundings_.folders));
    if (std::ranges::find(slozky.povolene(), expanded) == slozky.povolene().end())
        return surroundings_.output.line("Složka „" + path + "“ povolená není.");
    slozky.odebrat(expanded);
    print();
}

void ConsoleFolders::printQuestion() const {
    const auto& otazka = surroundings_.slozky.otazka();
    if (!otazka) return;
    surroundings_.output.line("Povolit složku " + otazka->slozka + "? " + otazka->popis());
    surroundings_.output.line("Odpověz „ano“ nebo „ne“.");
}

void ConsoleFolders::answer(Slozky::Odpoved odpoved) {
    if (!surroundings_.slozky.otazka()) return surroundings_.output.line("Na nic se teď neptám.");
    surroundings_.slozky.odpovedet(odpoved);
}

} // namespace morvex
