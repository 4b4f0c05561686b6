#include "app/ui/models/IntegrationsModel.h"

#include "app/companion/CompanionState.h"
#include "app/companion/ToolGate.h"
#include "app/ui/Localized.h"

#include <algorithm>
#include <utility>

namespace morvex {

namespace {

/// Why a row cannot be switched.
constexpr const char* notYet = "Tahle verze to ještě neumí.";
constexpr const char* onlyOnMac = "Apple Mail existuje jen v systému macOS.";

} // namespace

IntegrationsModel::IntegrationsModel(Companion& companion, Features& features, TaskScope& scope)
    : companion_(companion),
      features_(features),
      scope_(scope),
      trouble_(companion.stav().potizNastaveni, [this] { refresh(); }) {
    addPersonalData();
    addMacTools();
    addCustomApps();
    watch(companion_.stav().zjistovani);
}

void IntegrationsModel::refreshRows() {
    for (const auto& row : rows_) row->refresh();
}

bool IntegrationsModel::detecting() const {
    return companion_.stav().zjistovani > 0;
}

void IntegrationsModel::detectAgain() {
    if (!detecting()) companion_.obnovit();
}

void IntegrationsModel::addPersonalData() {
    addMissing(Integration::calendar, "Kalendář", notYet);
    addMissing(Integration::reminders, "Připomínky", notYet);
    addMissing(Integration::contacts, "Kontakty", notYet);
    auto& notes = features_.records.poznamky();
    add(personalData_, {.integration = Integration::notes, .name = "Poznámky Morvex", .detail = [&notes] {
                            return std::to_string(notes.notes().size()) + " synchronizováno";
                        }});
    addMissing(Integration::webSearch, "Vyhledávání na webu", notYet);
    addMissing(Integration::appleMail, "Apple Mail", onlyOnMac);
    addMissing(Integration::smtp, "SMTP / IMAP", notYet);
}

void IntegrationsModel::addMissing(Integration integration, const char* name, const char* reason) {
    add(personalData_, {.integration = integration,
                        .name = name,
                        .detail = [reason] { return std::string(reason); },
                        .available = false});
}

void IntegrationsModel::addCustomApps() {
    auto& service = features_.customApps.service();
    auto& row = add(customApps_, {.integration = Integration::customApps,
                                  .name = "Vlastní aplikace",
                                  .detail = [this] { return customAppsDetail(); },
                                  .action = "Spravovat"});
    row.follow(service.priZmene([&row] { row.refresh(); }));
}

std::string IntegrationsModel::customAppsDetail() const {
    auto connected = std::ranges::count_if(features_.customApps.service().apps(), &AppSummary::enabled);
    auto tools = std::ranges::count_if(companion_.nastroje().nabizeneNastroje(),
                                       [](const auto& tool) { return tool.name.starts_with("mac.custom."); });
    return std::to_string(connected) + " připojeno · " + std::to_string(tools) + " nástrojů";
}

void IntegrationsModel::addMacTools() {
    addAgent(Integration::codex, "Codex", features_.agents.stav().codex);
    addAgent(Integration::claude, "Claude Code", features_.agents.stav().claude);
    auto& slozky = features_.files.slozky();
    auto& files = add(macTools_, {.integration = Integration::files, .name = "Soubory", .detail = [&slozky] {
                                      return std::to_string(slozky.povolene().size()) + " povolených složek";
                                  }});
    files.follow(slozky.priZmene([&files] { files.refresh(); }));
    add(macTools_,
        {.integration = Integration::terminal, .name = "Terminál", .detail = [] {
             return std::string("Spouští příkazy v povolených složkách a umí spustit jakýkoli kód");
         }});
}

void IntegrationsModel::addAgent(Integration integration, const char* name, QProperty<AgentStatus>& status) {
    auto isKnown = [this, &status] {
        return !detecting() && status.value().problem != AgentsFeature::Stav::jesteNevim;
    };
    auto detail = [isKnown, &status]() -> std::string {
        if (!isKnown()) return AgentsFeature::Stav::jesteNevim;
        return status.value().installed ? "Nainstalováno" : "Nenainstalováno";
    };
    auto problem = [isKnown, &status] {
        return isKnown() ? status.value().problem.value_or(std::string()) : std::string();
    };
    auto& row =
        add(macTools_, {.integration = integration, .name = name, .detail = detail, .problem = problem});
    row.follow(status);
    row.follow(companion_.stav().zjistovani);
}

IntegrationRow& IntegrationsModel::add(QList<QObject*>& group, IntegrationRow::Description description) {
    auto& row = rows_.emplace_back(
        std::make_unique<IntegrationRow>(companion_.integrations(), scope_, std::move(description),
                                         [this](const Result<void>& result) { trouble_.note(result); }));
    group.push_back(row.get());
    return *row;
}

} // namespace morvex
