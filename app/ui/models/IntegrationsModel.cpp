#include "app/ui/models/IntegrationsModel.h"

#include <QPointer>

#include <utility>

namespace morvex {

namespace {

/// Why a row cannot be switched.
std::function<std::string()> sentence(const char* text) {
    return [text] { return std::string(text); };
}

constexpr const char* notYet = "Tahle verze to ještě neumí.";
constexpr const char* onlyOnMac = "Apple Mail existuje jen v systému macOS.";

} // namespace

IntegrationsModel::IntegrationsModel(Companion& companion) : companion_(companion) {
    addPersonalData();
    addMacTools();
    add(customApps_, {.integration = Integration::customApps,
                      .name = "Vlastní aplikace",
                      .detail = sentence(notYet),
                      .available = false});
}

void IntegrationsModel::detectAgain() {
    companion_.obnovit();
}

void IntegrationsModel::addPersonalData() {
    const std::pair<Integration, const char*> rows[] = {
        {Integration::calendar, "Kalendář"},
        {Integration::reminders, "Připomínky"},
        {Integration::contacts, "Kontakty"},
        {Integration::notes, "Poznámky Morvex"},
        {Integration::webSearch, "Vyhledávání na webu"},
    };
    for (const auto& [integration, name] : rows)
        add(personalData_,
            {.integration = integration, .name = name, .detail = sentence(notYet), .available = false});
    add(personalData_, {.integration = Integration::appleMail,
                        .name = "Apple Mail",
                        .detail = sentence(onlyOnMac),
                        .available = false});
    add(personalData_, {.integration = Integration::smtp,
                        .name = "SMTP / IMAP",
                        .detail = sentence(notYet),
                        .available = false});
}

void IntegrationsModel::addMacTools() {
    addAgent(Integration::codex, "Codex", companion_.stav().stavCodexu);
    addAgent(Integration::claude, "Claude Code", companion_.stav().stavClauda);
    auto& slozky = companion_.slozky();
    auto& files = add(macTools_, {.integration = Integration::files, .name = "Soubory", .detail = [&slozky] {
                                      return std::to_string(slozky.povolene().size()) + " povolených složek";
                                  }});
    slozky.priZmene([row = QPointer<IntegrationRow>(&files)] {
        if (row) row->refresh();
    });
    add(macTools_, {.integration = Integration::terminal,
                    .name = "Terminál",
                    .detail = sentence("Příkazy jen v povolených složkách")});
}

void IntegrationsModel::addAgent(Integration integration, const char* name, QProperty<AgentStatus>& status) {
    auto& row =
        add(macTools_,
            {.integration = integration,
             .name = name,
             .detail = [&status] { return status.value().installed ? "Nainstalováno" : "Nenainstalováno"; },
             .problem = [&status] { return status.value().problem.value_or(std::string()); }});
    row.follow(status);
}

IntegrationRow& IntegrationsModel::add(QList<QObject*>& group, IntegrationRow::Description description) {
    auto& row = rows_.emplace_back(
        std::make_unique<IntegrationRow>(companion_.integrations(), std::move(description)));
    group.push_back(row.get());
    return *row;
}

} // namespace morvex
