#include "app/console/ConsoleApps.h"

#include "foundation/Text.h"
#include "platform/ports/UserDefaults.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace morvex {

namespace {

std::string described(const AppSummary& app) {
    return app.name + ", " + app.endpoint + (app.enabled ? ", zapnutá" : ", vypnutá") +
           (app.comesFromIPhone ? ", synchronizovaná z iPhonu" : ", přidaná na Macu");
}

} // namespace

void ConsoleApps::print() const {
    const auto apps = services_.apps.apps();
    if (apps.empty()) services_.output.line("Žádné vlastní aplikace. Přidá je „aplikace-pridat“.");
    for (const auto& app : apps) services_.output.line("Aplikace: " + described(app));
}

void ConsoleApps::change(const std::string& words) {
    const auto blank = words.find(' ');
    const auto action = fold(words.substr(0, blank));
    const auto name = blank == std::string::npos ? std::string() : trim(words.substr(blank));
    const bool isSwitch = action == "zap" || action == "vyp";
    if (name.empty() || (!isSwitch && action != "odebrat"))
        return services_.output.line(std::string("Správně: aplikace ") + usage);
    auto app = find(name);
    if (!app) return;
    if (isSwitch) return services_.scope.spawn(turn(*std::move(app), action == "zap"));
    if (app->comesFromIPhone)
        return services_.output.line("Aplikaci z iPhonu tu jde jen vypnout: „aplikace vyp " + app->name +
                                     "“.");
    services_.scope.spawn(remove(*std::move(app)));
}

std::optional<AppSummary> ConsoleApps::find(const std::string& words) const {
    const auto wanted = fold(words);
    std::vector<AppSummary> named;
    for (auto& app : services_.apps.apps()) {
        if (app.endpoint == words) return app;
        if (fold(app.name) == wanted) named.push_back(std::move(app));
    }
    if (named.size() == 1) return named.front();
    if (named.empty())
        services_.output.line("Aplikace „" + words + "“ tu není. Seznam ukáže „aplikace“.");
    else
        services_.output.line("Aplikací „" + words + "“ je tu víc. Napiš místo názvu adresu.");
    return std::nullopt;
}

Task<void> ConsoleApps::turn(AppSummary app, bool on) {
    const auto kept = co_await services_.apps.setEnabled(app.id, on);
    if (!kept) co_return services_.output.trouble(neulozenoKvuli(kept.error()));
    services_.output.line((on ? "Zapnuto: " : "Vypnuto: ") + app.name);
}

Task<void> ConsoleApps::remove(AppSummary app) {
    co_await services_.apps.remove(app.id);
    services_.output.line("Odebráno: " + app.name);
}

void ConsoleApps::startAdding() {
    draft_.emplace();
    services_.output.line("Název nové aplikace? Prázdný řádek přidávání zruší.");
}

void ConsoleApps::answer(const std::string& line) {
    if (draft_->name && draft_->endpoint) return takeToken(line);
    const auto text = trim(line);
    if (text.empty()) {
        draft_.reset();
        return services_.output.line("Nic jsem nepřidal.");
    }
    if (!draft_->name) {
        draft_->name = text;
        return services_.output.line("Adresa služby MCP? Začíná https://.");
    }
    draft_->endpoint = text;
    services_.output.line("Přístupový token? Není povinný.");
    services_.setTyping(Typing::hidden);
}

void ConsoleApps::takeToken(const std::string& token) {
    services_.setTyping(Typing::shown);
    services_.scope.spawn(add(*std::exchange(draft_, std::nullopt), token));
}

Task<void> ConsoleApps::add(Draft draft, std::string token) {
    const auto name = *draft.name;
    auto saved =
        co_await services_.apps.save(std::nullopt, name, *std::move(draft.endpoint), std::move(token));
    if (!saved) co_return services_.output.trouble(saved.error().popis());
    services_.output.line("Přidáno: " + name);
}

} // namespace morvex
