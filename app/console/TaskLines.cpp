#include "app/console/TaskLines.h"

#include "foundation/Paths.h"
#include "foundation/Text.h"

#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>

namespace morvex {

namespace {

/// The latest message of the task.
std::optional<std::string> news(const UkolAgenta& ukol, const Bezici* bezici) {
    if (bezici && bezici->workItemID == ukol.workItemID && ukol.stav == UkolAgenta::Stav::bezi)
        return bezici->prubeh;
    return ukol.chyba ? std::optional(ukol.chyba->czech()) : ukol.shrnuti;
}

/// Only first lines are used, so that texts of an agent or of the phone cannot pass for lines of this
/// program.
std::string line(std::size_t number, const UkolAgenta& ukol, const Bezici* bezici) {
    auto text = "Úloha " + std::to_string(number) + ": " + firstLine(ukol.nazev) + " — " +
                std::string(WorkItemStatus(statusForPhone(ukol.stav)).words()) + " (" +
                firstLine(ukol.nastroj) + ", " + firstLine(paths::lastComponent(ukol.slozka)) + ")";
    if (auto told = news(ukol, bezici)) text += ": " + firstLine(*told);
    return text;
}

} // namespace

std::vector<std::string> taskLines(const HistorieAgentu& historie, const AgentRunner& agenti) {
    std::vector<std::string> lines;
    if (historie.polozky().empty()) lines.emplace_back("Úlohy: žádná tu není");
    for (const auto& ukol : historie.polozky())
        lines.push_back(line(lines.size() + 1, ukol, agenti.bezici()));
    return lines;
}

} // namespace morvex
