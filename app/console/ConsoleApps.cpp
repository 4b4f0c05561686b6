#include "app/console/ConsoleApps.h"

#include "foundation/Text.h"
#include "platform/ports/UserDefaults.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>
#include <vector>

namespace morvex {

namespace {

std::string described(const AppSummary& app) {
    return app.name + ", " + app.endpoint + (app.enabled ? ", zapnutá" : ", vypnutá") +
           (app.comesFromIPhone ? ", synchronizovaná z iPhonu" : ", přidaná na Macu");
}

} // namespace

struct ConsoleApps::Action {
    std::string_view name;
    void (*run)(ConsoleApps& apps, const AppSummary& app);
};

const std::vector<ConsoleApps::Action>& ConsoleApps::actions() {
    static const std::vector<Action> table{
        {"zap", [](ConsoleApps& apps, const AppSummary& app) { apps.switchApp(app, true); }},
        {"vyp", [](ConsoleApps& apps, const AppSummary& app) { apps.switchApp(app, false); }},
        {"odebrat", [](ConsoleApps& apps, const AppSummary& app) { apps.removeApp(app); }},
        {"zmeny", [](ConsoleApps& apps, const AppSummary& app) { apps.showNews(app); }},
        {"videl", [](ConsoleApps& apps, const AppSummary& app) { apps.markSeen(app); }},
        {"hlidat", [](ConsoleApps& apps, const AppSummary& app) { apps.hold(app, true); }},
        {"nehlidat", [](ConsoleApps& apps, const AppSummary& app) { apps.hold(app, false); }},
    };
    return table;
}

void ConsoleApps::print() const {
    const auto apps = services_.apps.apps();
    if (apps.empty()) services_.output.line("Žádné vlastní aplikace. Přidá je „aplikace-pridat“.");
    int number = 0;
    for (const auto& app : apps) {
        services_.output.line("Aplikace " + std::to_string(++number) + ": " + described(app));
        if (app.outcome) services_.output.line("  " + app.outcome->popis().czech());
        if (app.news > 0)
            services_.output.line("  Změněné nebo nové nástroje: " + std::to_string(app.news) +
                                  ". Ukáže je „aplikace zmeny " + app.name + "“.");
    }
    services_.output.trouble(services_.apps.problem());
}

void ConsoleApps::change(const std::string& words) {
    const auto blank = words.find(' ');
    const auto wanted = fold(words.substr(0, blank));
    const auto name = blank == std::string::npos ? std::string() : trim(words.substr(blank));
    if (wanted == "znovu" && name.empty()) {
        services_.apps.refreshSoon();
        return services_.output.line("Ptám se aplikací znovu. Výsledek ukáže „aplikace“.");
    }
    const auto action = std::ranges::find(actions(), wanted, &Action::name);
    if (action == actions().end() || name.empty())
        return services_.output.line(std::string("Správně: aplikace ") + usage);
    if (const auto app = find(name)) action->run(*this, *app);
}

void ConsoleApps::switchApp(const AppSummary& app, bool on) {
    services_.scope.spawn(turn(app, on));
}

void ConsoleApps::removeApp(const AppSummary& app) {
    if (app.comesFromIPhone)
        return services_.output.line("Aplikaci z iPhonu tu jde jen vypnout: „aplikace vyp " + app.name +
                                     "“.");
    services_.scope.spawn(remove(app));
}

void ConsoleApps::showNews(const AppSummary& app) {
    const auto news = services_.apps.news(app.id);
    if (news.empty()) return services_.output.line("Od posledního pohledu se nic nezměnilo.");
    shown_[app.id] = news;
    for (const auto& tool : news) printNews(toolNews(tool));
    services_.output.line("Až to projdeš, napiš „aplikace videl " + app.name + "“.");
}

void ConsoleApps::printNews(const ToolNews& news) const {
    const auto& output = services_.output;
    output.line((news.isNew ? "Nový nástroj: " : "Změněný nástroj: ") + news.name);
    if (!news.isNew) output.foreign("Bylo: " + news.before + " " + news.schemaBefore);
    output.foreign((news.isPast ? "Mezitím bylo: " : "Je: ") + news.after + " " + news.schemaAfter);
}

void ConsoleApps::markSeen(const AppSummary& app) {
    const auto shown = shown_.find(app.id);
    if (shown == shown_.end())
        return services_.output.line("Nejdřív si je prohlédni: „aplikace zmeny " + app.name + "“.");
    services_.apps.looked(app.id, std::exchange(shown->second, {}));
    shown_.erase(shown);
    services_.output.line("Poznamenáno: " + app.name);
}

void ConsoleApps::hold(const AppSummary& app, bool holds) {
    services_.apps.setHoldsChanges(app.id, holds);
    services_.output.line(
        (holds ? "Změněné a nové nástroje čekají, až je uvidíš: " : "Změněné a nové nástroje nečekají: ") +
        app.name);
}

std::optional<AppSummary> ConsoleApps::find(const std::string& words) const {
    const auto wanted = fold(words);
    const auto apps = services_.apps.apps();
    std::vector<AppSummary> named;
    std::ranges::copy_if(apps, std::back_inserter(named), [&](const AppSummary& app) {
        return fold(app.name) == wanted || app.endpoint == words;
    });
    if (named.size() == 1) return named.front();
    for (std::size_t i = 0; named.empty() && i < apps.size(); ++i)
        if (std::to_string(i + 1) == words) return apps[i];
    if (named.empty())
        services_.output.line("Aplikace „" + words + "“ tu není. Seznam ukáže „aplikace“.");
    else
        services_.output.line("Aplikací „" + words + "“ je tu víc. Napiš místo názvu číslo ze seznamu.");
    return std::nullopt;
}

Task<void> ConsoleApps::turn(AppSummary app, bool on) {
    const auto kept = co_await services_.apps.setEnabled(app.id, on);
    if (!kept) co_return services_.output.trouble(notSavedBecause(kept.error()));
    services_.output.line((on ? "Zapnuto: " : "Vypnuto: ") + app.name);
}

Task<void> ConsoleApps::remove(AppSummary app) {
    co_await services_.apps.remove(app.id);
    services_.output.line("Odebráno: " + app.name);
}

void ConsoleApps::startAdding() {
    using Question = ConsoleQuestions::Question;
    services_.questions.ask(
        {{"Název nové aplikace? Prázdný řádek přidávání zruší.", Question::Empty::giveUp},
         {"Adresa služby MCP? Začíná https://.", Question::Empty::giveUp},
         {"Přístupový token? Není povinný.", Question::Empty::answer, ConsoleQuestions::Typing::hidden}},
        [this](ConsoleQuestions::Answers answers) {
            services_.scope.spawn(add(std::move(answers[0]), std::move(answers[1]), std::move(answers[2])));
        });
}

Task<void> ConsoleApps::add(std::string name, std::string endpoint, std::string token) {
    auto saved = co_await services_.apps.save(std::nullopt, name, std::move(endpoint), std::move(token));
    if (!saved) co_return services_.output.trouble(saved.error().popis());
    services_.output.line("Přidáno: " + name);
}

} // namespace morvex
