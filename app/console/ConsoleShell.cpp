#include "app/console/ConsoleShell.h"

#include "app/companion/Bdelost.h"
#include "app/companion/CompanionState.h"
#include "app/console/TaskLines.h"
#include "app/settings/MacIntegrationSettings.h"
#include "foundation/Text.h"
#include "shared-apple/RelayAddress.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <system_error>
#include <utility>

namespace morvex {

namespace {

/// Most lines about the link that are printed in one minute.
constexpr int mostNews = 60;

struct NamedIntegration {
    std::string_view name;
    Integration integration;
};

constexpr std::array<NamedIntegration, integrationCount> integrations{{
    {"kalendare", Integration::calendar},
    {"pripominky", Integration::reminders},
    {"kontakty", Integration::contacts},
    {"poznamky", Integration::notes},
    {"sluzby", Integration::customApps},
    {"apple-mail", Integration::appleMail},
    {"smtp", Integration::smtp},
    {"codex", Integration::codex},
    {"claude", Integration::claude},
    {"soubory", Integration::files},
    {"terminal", Integration::terminal},
    {"web", Integration::webSearch},
}};

} // namespace

struct ConsoleShell::Command {
    std::string_view name;
    std::string argument; ///< in brackets where it may be left out
    std::string_view help;
    void (*run)(ConsoleShell& shell, const std::string& argument);
};

const std::vector<ConsoleShell::Command>& ConsoleShell::commands() {
    static const std::vector<Command> table{
        {"stav", "", "spojení, telefon, složky a přepínače",
         [](ConsoleShell& shell, const std::string&) { shell.printStatus(); }},
        {"parovat", "", "vytvoří kód pro telefon",
         [](ConsoleShell& shell, const std::string&) { shell.pairing_.begin(); }},
        {"souhlasi", "", "číslo na telefonu je stejné",
         [](ConsoleShell& shell, const std::string&) {
             shell.pairing_.judge(ConsolePairing::Verdict::same);
         }},
        {"neshoduje", "", "číslo na telefonu je jiné",
         [](ConsoleShell& shell, const std::string&) {
             shell.pairing_.judge(ConsolePairing::Verdict::different);
         }},
        {"zrusit", "", "zruší rozdělané párování",
         [](ConsoleShell& shell, const std::string&) { shell.pairing_.cancel(); }},
        {"odpojit", "", "odvolá spárovaný telefon",
         [](ConsoleShell& shell, const std::string&) { shell.pairing_.unpair(); }},
        {"povolit", "CESTA", "povolí složku",
         [](ConsoleShell& shell, const std::string& path) { shell.folders_.allow(path); }},
        {"odebrat", "CESTA", "odebere povolenou složku",
         [](ConsoleShell& shell, const std::string& path) {
             shell.folders_.disallow(path);
             shell.output_.trouble(shell.companion_.stav().settingsTrouble);
         }},
        {"ano", "", "povolí složku, na kterou se ptám",
         [](ConsoleShell& shell, const std::string&) { shell.folders_.answer(Slozky::Odpoved::yes); }},
        {"ne", "", "nepovolí složku, na kterou se ptám",
         [](ConsoleShell& shell, const std::string&) { shell.folders_.answer(Slozky::Odpoved::no); }},
        {"zapnout", "CO", "zapne skupinu nástrojů",
         [](ConsoleShell& shell, const std::string& name) { shell.switchIntegration(name, true); }},
        {"vypnout", "CO", "vypne skupinu nástrojů",
         [](ConsoleShell& shell, const std::string& name) { shell.switchIntegration(name, false); }},
        {"aplikace", "[" + std::string(ConsoleApps::usage) + "]",
         "vlastní aplikace: vypíše je, nebo jednu změní",
         [](ConsoleShell& shell, const std::string& words) {
             if (words.empty()) return shell.apps_.print();
             shell.apps_.change(words);
         }},
        {"aplikace-pridat", "", "přidá vlastní aplikaci; na název, adresu a token se zeptá",
         [](ConsoleShell& shell, const std::string&) { shell.apps_.startAdding(); }},
        {"ucty", "", "poštovní účty", [](ConsoleShell& shell, const std::string&) { shell.mail_.print(); }},
        {"ucet-pridat", "", "přidá poštovní účet; na údaje se zeptá",
         [](ConsoleShell& shell, const std::string&) { shell.mail_.startAdding(); }},
        {"ucet-odebrat", "NÁZEV", "odebere poštovní účet i s heslem",
         [](ConsoleShell& shell, const std::string& label) { shell.mail_.remove(label); }},
        {"ucet-vychozi", "NÁZEV", "odesílá z něj, když se neřekne jiný",
         [](ConsoleShell& shell, const std::string& label) { shell.mail_.setDefault(label); }},
        {"ucet-overit", "NÁZEV", "zkusí se k účtu přihlásit",
         [](ConsoleShell& shell, const std::string& label) { shell.mail_.test(label); }},
        {"kalendare", "", "kalendáře a jejich ID",
         [](ConsoleShell& shell, const std::string&) { shell.organizer_.printCalendars(); }},
        {"kalendar", ConsoleOrganizer::usage,
         "povolí kalendář, zakáže ho, nebo do něj zapisuje nové události",
         [](ConsoleShell& shell, const std::string& words) { shell.organizer_.changeCalendar(words); }},
        {"pripominky", "", "nesplněné připomínky",
         [](ConsoleShell& shell, const std::string&) { shell.organizer_.printReminders(); }},
        {"kontakt", "JMÉNO", "adresy a čísla lidí toho jména",
         [](ConsoleShell& shell, const std::string& name) { shell.organizer_.printContacts(name); }},
        {"vzhuru", "zap|vyp", "při napájení nenechá počítač usnout",
         [](ConsoleShell& shell, const std::string& word) { shell.keepAwake(word); }},
        {"po-prihlaseni", "zap|vyp", "spouští Morvex po přihlášení",
         [](ConsoleShell& shell, const std::string& word) { shell.startAtLogin(word); }},
        {"zkusit", "", "připojí se hned, nebo se znovu zeptá klíčenky",
         [](ConsoleShell& shell, const std::string&) { shell.tryNow(); }},
        {"potvrdit", "", "povolí akci, která čeká",
         [](ConsoleShell& shell, const std::string&) {
             shell.approvals_.decide(ConsoleApprovals::Decision::approved);
         }},
        {"zamitnout", "", "odmítne akci, která čeká",
         [](ConsoleShell& shell, const std::string&) {
             shell.approvals_.decide(ConsoleApprovals::Decision::refused);
         }},
        {"ulohy", "", "úlohy kódovacích agentů",
         [](ConsoleShell& shell, const std::string&) { shell.printTasks(); }},
        {"zastav", "", "zastaví úlohu, která běží",
         [](ConsoleShell& shell, const std::string&) { shell.stopTask(); }},
        {"pokracovat", "N", "otevře relaci úlohy v aplikaci jejího agenta",
         [](ConsoleShell& shell, const std::string& number) { shell.continueTask(number); }},
        {"vymazat-historii", "ano", "zapomene všechny úlohy",
         [](ConsoleShell& shell, const std::string& answer) { shell.forgetTasks(answer); }},
        {"relay", "ADRESA", "nastaví relay pro příští párování",
         [](ConsoleShell& shell, const std::string& address) { shell.setRelay(address); }},
        {"obnovit", "", "znovu zjistí, co tu je, a pošle to telefonu",
         [](ConsoleShell& shell, const std::string&) { shell.lookAgain(); }},
        {"pomoc", "", "tento seznam", [](ConsoleShell& shell, const std::string&) { shell.printHelp(); }},
        {"konec", "", "ukončí program",
         [](ConsoleShell& shell, const std::string&) { shell.services_.quit(); }},
    };
    return table;
}

ConsoleShell::ConsoleShell(Companion& companion, Features& features, Services services)
    : companion_(companion),
      features_(features),
      services_(std::move(services)),
      output_(services_.print),
      folders_({features_.files.slozky(), services_.picker, services_.folders, services_.scope, output_}),
      questions_(output_, services_.setTyping),
      apps_({features_.customApps.service(), services_.scope, output_, questions_}),
      mail_({features_.mail, services_.scope, output_, questions_}),
      organizer_({features_.organizer.calendar(), features_.organizer.reminders(),
                  features_.organizer.contacts(), features_.context.services.localTime, services_.scope,
                  output_}),
      pairing_(companion_, output_,
               services_.drawsPictures ? ConsolePairing::Pictures::codes : ConsolePairing::Pictures::none),
      approvals_(companion_.schvalovani(), output_) {
    watch();
}

void ConsoleShell::greet(const std::string& version) {
    output_.line("Morvex " + version + " běží. Příkazy ukáže „pomoc“.");
    if (companion_.stav().areKeysLoading()) printAvailability();
    printTaskTrouble();
}

void ConsoleShell::watch() {
    auto& state = companion_.stav();
    notifiers_.push_back(state.dostupnost.addNotifier([this] { tellOfAvailability(); }));
    auto& bdelost = companion_.bdelost().stav();
    for (auto* potiz : {&state.potiz, &state.vaultTrouble, &state.settingsTrouble, &bdelost.potiz,
                        &bdelost.keepAwakeTrouble})
        notifiers_.push_back(potiz->addNotifier([this, potiz] {
            if (potiz->value() && mayTellOfLink()) output_.trouble(potiz->value());
        }));
    tasksChanged_ = features_.agents.historie().priZmene([this] { printTaskTrouble(); });
    notifiers_.push_back(state.phoneHasLeft.addNotifier([this] { tellOfLeaving(); }));
}

void ConsoleShell::handle(std::string_view line) {
    if (questions_.isAsking())
        questions_.answer(std::string(line));
    else
        run(trim(line));
    approvals_.lineTyped();
    pairing_.lineTyped();
}

void ConsoleShell::run(const std::string& trimmed) {
    if (trimmed.empty()) return;
    auto blank = trimmed.find(' ');
    auto name = fold(trimmed.substr(0, blank));
    auto argument = blank == std::string::npos ? std::string() : trim(trimmed.substr(blank));
    auto found = std::ranges::find(commands(), name, &Command::name);
    if (found == commands().end())
        return output_.line("Neznámý příkaz „" + name + "“. Seznam ukáže „pomoc“.");
    const bool isOptional = found->argument.starts_with('[');
    if (!isOptional && argument.empty() != found->argument.empty())
        return output_.line(trim("Správně: " + std::string(found->name) + " " + found->argument));
    found->run(*this, argument);
}

void ConsoleShell::printHelp() const {
    for (const auto& command : commands()) {
        auto usage = std::string(command.name) + " " + command.argument;
        usage.resize(std::max<std::size_t>(usage.size(), 21), ' ');
        output_.line("  " + usage + "  " + std::string(command.help));
    }
    std::vector<std::string> names;
    for (const auto& row : integrations) names.emplace_back(row.name);
    output_.line("  CO je jedno z: " + join(names, ", "));
}

void ConsoleShell::printStatus() {
    const auto& state = companion_.stav();
    shownAvailability_.clear();
    printAvailability();
    printNextAttempt();
    output_.trouble(state.potiz);
    output_.trouble(state.vaultTrouble);
    output_.trouble(state.settingsTrouble);
    if (state.areKeysInFiles) output_.line(keysInFiles);
    const auto& peer = state.protejsek.value();
    output_.line("Telefon: " + (peer ? peer->deviceID.rawValue : std::string("žádný")));
    output_.line("Relay: " + state.relayAdresa.value());
    folders_.print();
    std::vector<std::string> on;
    for (const auto& row : integrations)
        if (companion_.integrations().isOn(row.integration)) on.emplace_back(row.name);
    output_.line("Zapnuto: " + join(on, ", "));
    printWakefulness();
    printLoginItem();
    output_.trouble(companion_.bdelost().stav().keepAwakeTrouble);
    output_.trouble(companion_.bdelost().stav().potiz);
    output_.trouble(features_.agents.historie().potiz());
}

void ConsoleShell::printAvailability() {
    auto text = companion_.stav().linkText(services_.clock.now()).czech();
    if (std::exchange(shownAvailability_, text) != text) output_.line("Stav: " + text);
}

void ConsoleShell::printNextAttempt() const {
    const auto& when = companion_.stav().nextAttempt.value();
    const auto now = services_.clock.sinceBoot();
    if (when && *when > now) output_.line(nextAttemptText(*when - now));
}

void ConsoleShell::tryNow() {
    if (companion_.stav().keys.value().kind != KeysState::Case::present) {
        output_.line(ConsolePairing::tryingKeys);
        return companion_.tryAgain();
    }
    output_.line(companion_.stav().nextAttempt.value() ? "Zkouším to hned." : "Na další pokus se nečeká.");
    companion_.connectNow();
}

void ConsoleShell::tellOfAvailability() {
    const auto text = companion_.stav().linkText(services_.clock.now()).czech();
    if (text != shownAvailability_ && mayTellOfLink()) printAvailability();
}

/// The number of lines is limited, because a relay may cause any number of news.
bool ConsoleShell::mayTellOfLink() {
    const auto now = services_.clock.sinceBoot();
    if (now - minuteOfNews_ >= std::chrono::minutes(1)) {
        minuteOfNews_ = now;
        newsOfMinute_ = 0;
    }
    ++newsOfMinute_;
    if (newsOfMinute_ == mostNews + 1)
        output_.line("Zpráv o spojení je příliš mnoho, minutu se další neukážou. Co platí, vypíše „stav“.");
    return newsOfMinute_ <= mostNews;
}

void ConsoleShell::printWakefulness() {
    output_.line("Bdění: " + companion_.bdelost().stavText().czech());
}

void ConsoleShell::printLoginItem() {
    bool starts = companion_.bdelost().stav().spoustetPoPrihlaseni;
    output_.line(std::string("Po přihlášení: ") + (starts ? "spouští se" : "nespouští se"));
}

/// Limited too, because a relay may report the phone's leaving any number of times.
void ConsoleShell::tellOfLeaving() {
    if (companion_.stav().phoneHasLeft.value() && mayTellOfLink())
        output_.line("Párování: " + phoneLeftMeanwhile.czech());
}

void ConsoleShell::printTasks() const {
    output_.trouble(features_.agents.historie().potiz());
    for (const auto& line : taskLines(features_.agents.historie(), features_.agents.runner()))
        output_.line(line);
}

void ConsoleShell::printTaskTrouble() {
    const auto& trouble = features_.agents.historie().potiz();
    if (std::exchange(shownTaskTrouble_, trouble) != trouble) output_.trouble(trouble);
}

void ConsoleShell::stopTask() {
    const auto currentTask = features_.agents.currentTask();
    if (currentTask && features_.agents.stopTask(*currentTask)) return output_.line("Zastavuji úlohu.");
    output_.line(currentTask ? "Úloha už končí." : "Žádná úloha neběží.");
}

void ConsoleShell::continueTask(const std::string& number) {
    auto& historie = features_.agents.historie();
    const auto& tasks = historie.polozky();
    std::size_t position = 0;
    auto [end, problem] = std::from_chars(number.data(), number.data() + number.size(), position);
    const bool isNumber = problem == std::errc() && end == number.data() + number.size();
    if (!isNumber || position < 1 || position > tasks.size())
        return output_.line("Úloha „" + number + "“ tu není. Čísla ukáže „ulohy“.");
    shownTaskTrouble_.reset();
    if (historie.otevritRelaci(tasks[position - 1])) return output_.line("Otevírám relaci.");
    printTaskTrouble();
}

void ConsoleShell::setRelay(const std::string& address) {
    const auto chosen = companion_.chooseRelay(address);
    const auto& kept = companion_.stav().relayAdresa.value();
    output_.line(chosen ? "Relay: " + kept : chosen.error().popis().czech() + " Zůstává " + kept);
}

void ConsoleShell::lookAgain() {
    companion_.obnovit();
    output_.line("Zjišťuji znovu, co tu je.");
}

void ConsoleShell::forgetTasks(const std::string& answer) {
    if (fold(answer) != "ano") return output_.line("Úlohy zůstaly. Zapomene je „vymazat-historii ano“.");
    const auto& historie = features_.agents.historie();
    if (historie.polozky().empty() && !historie.potiz()) return printTasks();
    shownTaskTrouble_.reset();
    services_.scope.spawn(forgetAndTell());
}

Task<void> ConsoleShell::forgetAndTell() {
    auto& historie = features_.agents.historie();
    historie.vymazat();
    co_await historie.saved();
    if (!historie.potiz()) output_.line("Úlohy jsou zapomenuté.");
}

void ConsoleShell::switchIntegration(const std::string& name, bool value) {
    auto found = std::ranges::find(integrations, fold(name), &NamedIntegration::name);
    if (found == integrations.end())
        return output_.line("Neznámá skupina „" + name + "“. Seznam ukáže „pomoc“.");
    if (value) return services_.scope.spawn(turnOnAndTell(found->integration, std::string(found->name)));
    companion_.integrations().turnOff(found->integration);
    output_.line("Vypnuto: " + std::string(found->name));
    output_.trouble(companion_.stav().settingsTrouble);
}

Task<void> ConsoleShell::turnOnAndTell(Integration integration, std::string name) {
    const auto kept = co_await companion_.integrations().turnOn(integration);
    if (!kept) co_return output_.trouble(notSavedBecause(kept.error()));
    if (companion_.integrations().isOn(integration)) output_.line("Zapnuto: " + name);
}

void ConsoleShell::keepAwake(const std::string& word) {
    auto wanted = readSwitch(word);
    if (!wanted) return;
    companion_.bdelost().setDrzetVzhuru(*wanted);
    printWakefulness();
    output_.trouble(companion_.stav().settingsTrouble);
}

void ConsoleShell::startAtLogin(const std::string& word) {
    auto wanted = readSwitch(word);
    if (!wanted) return;
    companion_.bdelost().setSpoustetPoPrihlaseni(*wanted);
    printLoginItem();
}

std::optional<bool> ConsoleShell::readSwitch(const std::string& word) const {
    auto folded = fold(word);
    if (folded == "zap") return true;
    if (folded == "vyp") return false;
    output_.line("Napiš „zap“ nebo „vyp“.");
    return std::nullopt;
}

} // namespace morvex
