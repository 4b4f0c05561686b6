#include "app/ui/models/AgentTasksModel.h"

#include "app/agents/AgentId.h"
#include "app/ui/Localized.h"
#include "app/ui/ShortDate.h"

#include <QStringList>
#include <QVariantMap>

#include <algorithm>

namespace morvex {

namespace {

QString agentName(const UkolAgenta& ukol) {
    if (ukol.nastroj == AgentId::claudeCode) return QStringLiteral("Claude Code");
    if (ukol.nastroj == AgentId::codex) return QStringLiteral("Codex");
    return QString::fromStdString(ukol.nastroj);
}

QString stateText(UkolAgenta::Stav stav) {
    switch (stav) {
    case UkolAgenta::Stav::bezi:
        return localized("Pracuje"_sentence);
    case UkolAgenta::Stav::hotovo:
        return localized("Hotovo"_sentence);
    case UkolAgenta::Stav::chyba:
        return localized("Skončilo chybou"_sentence);
    case UkolAgenta::Stav::preruseno:
        return localized("Přerušeno"_sentence);
    }
    return {};
}

/// The label of the button that continues the task.
QString continuation(const UkolAgenta& ukol) {
    return ukol.nastroj == AgentId::claudeCode ? localized("Pokračovat v Claude"_sentence)
                                               : localized("Pokračovat v Codexu"_sentence);
}

QString idOf(const UkolAgenta& ukol) {
    return QString::fromStdString(ukol.id.text());
}

QVariantMap row(const UkolAgenta& ukol) {
    const QStringList about{agentName(ukol), stateText(ukol.stav), shortDate(ukol.aktualizovano)};
    const auto detail = ukol.chyba ? *ukol.chyba : Sentence(ukol.shrnuti.value_or(std::string()));
    return {
        {QStringLiteral("id"), idOf(ukol)},
        {QStringLiteral("title"), QString::fromStdString(ukol.nazev)},
        {QStringLiteral("state"), about.join(QStringLiteral(" · "))},
        {QStringLiteral("detail"), localized(detail)},
        {QStringLiteral("running"), ukol.stav == UkolAgenta::Stav::bezi},
        {QStringLiteral("failed"), ukol.stav == UkolAgenta::Stav::chyba},
        {QStringLiteral("continuation"), continuation(ukol)},
    };
}

} // namespace

AgentTasksModel::AgentTasksModel(AgentsFeature& agents)
    : agents_(agents), historie_(agents.historie()), rows_(*this, [this] { return readRows(); }) {
    follow(historie_.priZmene([this] { refresh(); }));
}

QVariantList AgentTasksModel::readRows() const {
    QVariantList rows;
    for (const auto& ukol : historie_.polozky()) rows.push_back(row(ukol));
    return rows;
}

QString AgentTasksModel::trouble() const {
    return localized(historie_.potiz().value_or(Sentence()));
}

QString AgentTasksModel::runningTool() const {
    const auto* ukol = historie_.bezici();
    return ukol ? agentName(*ukol) : QString();
}

QString AgentTasksModel::runningId() const {
    const auto* ukol = historie_.bezici();
    return ukol ? idOf(*ukol) : QString();
}

void AgentTasksModel::resume(const QString& id) {
    if (const auto* ukol = find(id)) historie_.otevritRelaci(*ukol);
}

void AgentTasksModel::stop(const QString& id) {
    if (const auto* ukol = find(id)) agents_.stopTask(ukol->workItemID);
}

void AgentTasksModel::clear() {
    historie_.vymazat();
}

const UkolAgenta* AgentTasksModel::find(const QString& id) const {
    auto found = std::ranges::find(historie_.polozky(), id, idOf);
    if (found != historie_.polozky().end()) return &*found;
    const auto* running = historie_.bezici();
    return running && idOf(*running) == id ? running : nullptr;
}

} // namespace morvex
