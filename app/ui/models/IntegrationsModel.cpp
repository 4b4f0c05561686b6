#include "app/ui/models/IntegrationsModel.h"

#include "app/companion/CompanionState.h"
#include "app/ui/Localized.h"

#include <algorithm>
#include <utility>

namespace morvex {

namespace {

using Action = IntegrationRow::Action;

std::function<Action()> opening(const char* sheet) {
    return [sheet] { return Action{"Spravovat"_sentence, sheet}; };
}

/// A row of what the system has to grant: its status, why it could not be asked, and the button that asks
/// again.
template <class Service>
IntegrationRow::Description rowOf(Integration integration, Sentence name, Service& service,
                                  TaskScope& scope) {
    return {.integration = integration,
            .name = std::move(name),
            .detail = [&service] { return service.statusText(); },
            .problem = [&service] { return service.accessError().value_or(Sentence()); },
            .action = [&service, &scope]() -> Action {
                if (service.authorizationStatus() == DataAccess::full) return {};
                return {"Povolit"_sentence, "",
                        [&service, &scope] { scope.spawn(service.requestAccess(scope.token())); }};
            }};
}

} // namespace

IntegrationsModel::IntegrationsModel(Companion& companion, Features& features, TaskScope& scope)
    : companion_(companion),
      features_(features),
      scope_(scope),
      trouble_(companion.stav().settingsTrouble, [this] { refresh(); }) {
    addPersonalData();
    addMacTools();
    addCustomApps();
    watch(companion_.stav().detectionsUnderWay);
}

void IntegrationsModel::refreshRows() {
    for (const auto& row : rows_) row->refresh();
}

bool IntegrationsModel::detecting() const {
    return companion_.stav().detectionsUnderWay > 0;
}

void IntegrationsModel::detectAgain() {
    if (!detecting()) companion_.obnovit();
}

void IntegrationsModel::addPersonalData() {
    addOrganizer();
    auto& notes = features_.records.poznamky();
    add(personalData_,
        {.integration = Integration::notes, .name = "Poznámky Morvex"_sentence, .detail = [&notes] {
             return "{pocet} synchronizováno"_sentence(notes.notes().size());
         }});
    addWebSearch();
    addMail();
}

void IntegrationsModel::addOrganizer() {
    auto& calendars = features_.organizer.calendar();
    auto calendarRow = rowOf(Integration::calendar, "Kalendář"_sentence, calendars, scope_);
    calendarRow.detail = [&calendars]() -> Sentence {
        if (calendars.authorizationStatus() != DataAccess::full) return calendars.statusText();
        return "{pocet} kalendářů vybráno"_sentence(calendars.enabledCalendars().size());
    };
    calendarRow.action = [&calendars, ask = std::move(calendarRow.action)]() -> Action {
        if (calendars.authorizationStatus() != DataAccess::full) return ask();
        return {"Vybrat"_sentence, "calendars"};
    };
    auto& calendar = add(personalData_, std::move(calendarRow));
    calendar.follow(calendars.onRowsChange([&calendar] { calendar.refresh(); }));

    auto& reminders = features_.organizer.reminders();
    auto reminderRow = rowOf(Integration::reminders, "Připomínky"_sentence, reminders, scope_);
    reminderRow.detail = [&reminders]() -> Sentence {
        if (reminders.authorizationStatus() != DataAccess::full || reminders.ringsAtPlaces())
            return reminders.statusText();
        return "{stav}. Na místo upozorní zařízení, která seznam sdílejí, tento počítač ne."_sentence(
            reminders.statusText());
    };
    auto& reminder = add(personalData_, std::move(reminderRow));
    reminder.follow(reminders.onRowsChange([&reminder] { reminder.refresh(); }));

    auto& contacts = features_.organizer.contacts();
    auto& contact = add(personalData_, rowOf(Integration::contacts, "Kontakty"_sentence, contacts, scope_));
    contact.follow(contacts.onRowsChange([&contact] { contact.refresh(); }));
}

void IntegrationsModel::addMail() {
    auto& mail = features_.mail;
    auto& accounts = mail.appleAccounts();
    const bool exists = mail.hasAppleMail();
    auto& apple = add(personalData_, {.integration = Integration::appleMail,
                                      .name = Sentence("Apple Mail"),
                                      .detail = [&accounts]() -> Sentence {
                                          if (accounts.problem()) return *accounts.problem();
                                          return "{pocet} účtů vybráno"_sentence(accounts.povolene().size());
                                      },
                                      .available = exists,
                                      .action = exists ? opening("appleMail") : [] { return Action(); }});
    apple.follow(accounts.onChange([&apple] { apple.refresh(); }));
    auto& direct = add(personalData_,
                       {.integration = Integration::smtp,
                        .name = Sentence("SMTP / IMAP"),
                        .detail = [&mail] { return "{pocet} účtů"_sentence(mail.smtp().accounts().size()); },
                        .action = opening("directMail")});
    direct.follow(mail.smtp().onChange([&direct] { direct.refresh(); }));
}

void IntegrationsModel::addWebSearch() {
    auto& voice = features_.voice.controller();
    auto& row = add(personalData_, {.integration = Integration::webSearch,
                                    .name = "Vyhledávání na webu"_sentence,
                                    .detail = [&voice]() -> Sentence {
                                        if (voice.apiKey().empty())
                                            return "Čekám na OpenAI klíč z iPhonu"_sentence;
                                        return "Aktuální veřejné informace se zdroji"_sentence;
                                    }});
    row.follow(voice.priZmene([&row] { row.refresh(); }));
}

void IntegrationsModel::addCustomApps() {
    auto& service = features_.customApps.service();
    auto& row = add(customApps_, {.integration = Integration::customApps,
                                  .name = "Vlastní aplikace"_sentence,
                                  .detail = [this] { return customAppsDetail(); },
                                  .action = opening("customApps")});
    row.follow(service.onRowsChange([&row] { row.refresh(); }));
}

Sentence IntegrationsModel::customAppsDetail() const {
    const auto& service = features_.customApps.service();
    const auto connected = std::ranges::count_if(
        service.apps(), [](const AppSummary& app) { return app.outcome && app.outcome->isConnected(); });
    const auto tools = service.catalogue().tools().size();
    return "{prvni} · {druhe}"_sentence("{pocet} připojeno"_sentence(connected),
                                        "{pocet} nástrojů"_sentence(tools));
}

void IntegrationsModel::addMacTools() {
    addAgent(Integration::codex, Sentence("Codex"), features_.agents.stav().codex);
    addAgent(Integration::claude, Sentence("Claude Code"), features_.agents.stav().claude);
    auto& slozky = features_.files.slozky();
    auto& files =
        add(macTools_, {.integration = Integration::files, .name = "Soubory"_sentence, .detail = [&slozky] {
                            return "{pocet} povolených složek"_sentence(slozky.povolene().size());
                        }});
    files.follow(slozky.priZmene([&files] { files.refresh(); }));
    add(macTools_,
        {.integration = Integration::terminal, .name = "Terminál"_sentence, .detail = []() -> Sentence {
             return "Spouští příkazy v povolených složkách a umí spustit jakýkoli kód"_sentence;
         }});
}

void IntegrationsModel::addAgent(Integration integration, Sentence name, QProperty<AgentStatus>& status) {
    auto isKnown = [this, &status] {
        return !detecting() && status.value().problem != Sentence(AgentsFeature::Stav::notKnownYet);
    };
    auto detail = [isKnown, &status]() -> Sentence {
        if (!isKnown()) return AgentsFeature::Stav::notKnownYet;
        if (status.value().installed) return "Nainstalováno"_sentence;
        return "Nenainstalováno"_sentence;
    };
    auto problem = [isKnown, &status] {
        return isKnown() ? status.value().problem.value_or(Sentence()) : Sentence();
    };
    auto& row =
        add(macTools_,
            {.integration = integration, .name = std::move(name), .detail = detail, .problem = problem});
    row.follow(status);
    row.follow(companion_.stav().detectionsUnderWay);
}

IntegrationRow& IntegrationsModel::add(QList<QObject*>& group, IntegrationRow::Description description) {
    auto& row = rows_.emplace_back(
        std::make_unique<IntegrationRow>(companion_.integrations(), scope_, std::move(description),
                                         [this](const Result<void>& result) { trouble_.note(result); }));
    group.push_back(row.get());
    return *row;
}

} // namespace morvex
