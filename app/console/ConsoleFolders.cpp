#include "app/console/ConsoleFolders.h"

#include "foundation/Paths.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace morvex {

ConsoleFolders::ConsoleFolders(Services services) : services_(std::move(services)) {
    asked_ = services_.slozky.onQuestion([this] { printQuestion(); });
}

void ConsoleFolders::print() const {
    const auto& slozky = services_.slozky;
    const auto& povolene = slozky.povolene();
    if (povolene.empty()) services_.output.line("Složky: žádná není povolená");
    const auto names = slozky.aliasy();
    for (std::size_t at = 0; at < povolene.size(); ++at) {
        const bool needsRenewal = slozky.vyzadujiObnoveni().contains(povolene[at]);
        const bool isBare = names[at] == paths::lastComponent(povolene[at]);
        services_.output.line("Složka: " + povolene[at] + (isBare ? "" : ", jménem " + names[at]) +
                              (needsRenewal ? " (povol ji znovu)" : ""));
    }
}

void ConsoleFolders::allow(const std::string& path) {
    auto expanded = expandingTilde(path, services_.folders);
    if (!expanded.starts_with('/')) return services_.output.line("Cesta ke složce začíná „/“ nebo „~“.");
    services_.picker.choose(expanded);
    services_.scope.spawn(allowAndShow());
}

Task<void> ConsoleFolders::allowAndShow() {
    co_await services_.slozky.pridat();
    if (const auto& failure = services_.slozky.chybaOpravneni()) services_.output.line(*failure);
    print();
}

void ConsoleFolders::disallow(const std::string& path) {
    auto& slozky = services_.slozky;
    auto expanded = paths::standardized(expandingTilde(path, services_.folders));
    if (std::ranges::find(slozky.povolene(), expanded) == slozky.povolene().end())
        return services_.output.line("Složka „" + path + "“ povolená není.");
    slozky.odebrat(expanded);
    print();
}

void ConsoleFolders::printQuestion() const {
    const auto& question = services_.slozky.question();
    if (!question) return;
    services_.output.line("Povolit složku " + question->slozka + "? " + question->popis().czech());
    services_.output.line("Odpověz „ano“ nebo „ne“.");
}

void ConsoleFolders::answer(Slozky::Odpoved odpoved) {
    if (!services_.slozky.question()) return services_.output.line("Na nic se teď neptám.");
    services_.slozky.answerQuestion(odpoved);
}

} // namespace morvex
