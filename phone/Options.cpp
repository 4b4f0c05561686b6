#include "phone/Options.h"

#include "foundation/Text.h"
#include "phone/PhoneError.h"
#include "shared/base/Try.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdlib>
#include <string_view>

namespace morvex {

namespace {

using Command = Options::Command;

struct CommandRow {
    Command command;
    std::string_view name;
    std::string_view arguments;
    std::string_view summary;
    std::string_view takes; ///< the allowed numbers of arguments, one digit each
};

constexpr std::array<CommandRow, 15> commands{{
    {Command::pair, "pair", "[QR-TEXT | - | FILE.png]", "spáruje se s Macem podle QR kódu", "01"},
    {Command::status, "status", "", "ukáže, co Mac právě umí a dělá", "0"},
    {Command::tools, "tools", "", "vypíše nástroje Macu", "0"},
    {Command::call, "call", "NAME [JSON | -]", "zavolá nástroj", "12"},
    {Command::tasks, "tasks", "", "vypíše úlohy agentů na Macu", "0"},
    {Command::notes, "notes", "ACTION …", "poznámky, i bez spojení", "01234"},
    {Command::summaries, "summaries", "ACTION …", "souhrny pro Mac", "01234"},
    {Command::watch, "watch", "", "vypisuje, co Mac posílá, do Ctrl-C", "0"},
    {Command::approve, "approve", "[ID yes|no]", "odpoví na žádost o potvrzení", "02"},
    {Command::key, "key", "", "předá Macu OpenAI klíč, jeden řádek ze vstupu; '-' ho smaže", "0"},
    {Command::preferences, "preferences", Options::preferencesArguments,
     "ukáže nebo změní jazyk, hlas a pojmenovaná místa", "023"},
    {Command::apps, "apps", Options::appsArguments, "vlastní aplikace; token je řádek ze vstupu", "123"},
    {Command::shell, "shell", "", "čte příkazy po řádcích; výchozí na terminálu", "0"},
    {Command::unpair, "unpair", "", "zruší párování", "0"},
    {Command::help, "help", "", "tenhle text", "0"},
}};

struct OptionRow {
    std::string_view name;
    std::string_view value;
    std::string_view summary;
    Result<void> (*take)(Options&, const std::string&);
};

std::unexpected<Error> wrongUsage(std::string text) {
    return failWith(ExitCode::usage, std::move(text));
}

Result<void> takeTimeout(Options& options, const std::string& value) {
    int seconds = 0;
    const auto* end = value.data() + value.size();
    auto read = std::from_chars(value.data(), end, seconds);
    if (read.ec != std::errc{} || read.ptr != end || seconds < 1 || seconds > 3600)
        return wrongUsage("--timeout chce celé vteřiny od 1 do 3600, ne '" + value + "'.");
    options.timeout = std::chrono::seconds(seconds);
    return {};
}

Result<void> takeApprove(Options& options, const std::string& value) {
    if (value == "ask")
        options.approve = ApprovalPolicy::ask;
    else if (value == "yes")
        options.approve = ApprovalPolicy::yes;
    else if (value == "no")
        options.approve = ApprovalPolicy::no;
    else
        return wrongUsage("--approve chce yes, no nebo ask, ne '" + value + "'.");
    return {};
}

Result<void> takeData(Options& options, const std::string& value) {
    options.data = value;
    return {};
}

Result<void> takeJson(Options& options, const std::string&) {
    options.isJson = true;
    return {};
}

Result<void> takeOffline(Options& options, const std::string&) {
    options.isOffline = true;
    return {};
}

Result<void> takeYes(Options& options, const std::string&) {
    options.isConfirmed = true;
    return {};
}

Result<void> takeHelp(Options& options, const std::string&) {
    options.command = Command::help;
    return {};
}

Result<void> takeVersion(Options& options, const std::string&) {
    options.command = Command::version;
    return {};
}

constexpr std::array<OptionRow, 8> optionRows{{
    {"--data", "DIR", "kde jsou klíče a spárovaný Mac (výchozí $XDG_DATA_HOME/morvex-phone)", takeData},
    {"--json", "", "výstup pro programy", takeJson},
    {"--timeout", "SECONDS", "jak dlouho nejvýš čekat na relay a na Mac (výchozí 30)", takeTimeout},
    {"--yes", "", "potvrdí párovací číslo bez otázky", takeYes},
    {"--offline", "", "poznámky a souhrny jen uloží; Mac je dostane při příštím spojení", takeOffline},
    {"--approve", "yes|no|ask", "odpověď na žádosti Macu (výchozí: na terminálu se zeptá)", takeApprove},
    {"--help", "", "tenhle text", takeHelp},
    {"--version", "", "verze programu", takeVersion},
}};

constexpr std::string_view endOfHelp =
    "\n"
    "Poznámky a souhrny:\n"
    "  notes list\n"
    "  notes create TITLE TEXT\n"
    "  notes edit TITLE TEXT [NEW-TITLE]\n"
    "  notes delete TITLE\n"
    "  notes sync                        jen vyrovná telefon s Macem\n"
    "  summaries list\n"
    "  summaries send TITLE TEXT [SOURCE]\n"
    "Název poznámky se porovnává bez velikosti písmen a diakritiky. Co Mac nepotvrdil, dostane při každém\n"
    "dalším spojení znovu.\n"
    "\n"
    "Shell má vlastní příkazy navíc; vypíše je jeho help.\n"
    "\n"
    "Návratové kódy:\n"
    "    0  hotovo\n"
    "    1  nástroj nebo druhá strana odmítla, nebo má potíž tenhle počítač\n"
    "    2  chybné zadání\n"
    "    3  telefon není spárovaný\n"
    "    4  Mac se včas neozval\n"
    "    5  relay se neozval nebo odmítl\n"
    "    6  párování nikdo nepotvrdil\n"
    "  130  přerušeno\n"
    "Shell s příkazy ze souboru nebo roury vrací kód prvního příkazu, který se nepovedl.\n";

void appendRow(std::string& help, std::string_view name, std::string_view value, std::string_view summary) {
    constexpr std::size_t summaryColumn = 34;
    std::string left = "  " + std::string(name);
    if (!value.empty()) left.append(" ").append(value);
    left.resize(std::max(summaryColumn, left.size() + 1), ' ');
    help.append(left).append(summary).append("\n");
}

Result<void> takeWord(Options& options, const std::string& word) {
    if (options.command) {
        options.arguments.push_back(word);
        return {};
    }
    const auto* row = std::ranges::find(commands, word, &CommandRow::name);
    if (row == commands.end()) return wrongUsage("Příkaz '" + word + "' neznám. Zkus morvex-phone --help.");
    options.command = row->command;
    return {};
}

Result<void> checkArguments(const Options& options) {
    const auto* row = std::ranges::find(commands, options.command, &CommandRow::command);
    if (row == commands.end()) return {};
    auto count = options.arguments.size();
    if (count < 10 && row->takes.contains(static_cast<char>('0' + count))) return {};
    auto usage = row->arguments.empty() ? "" : " " + std::string(row->arguments);
    return wrongUsage("Použití: morvex-phone " + std::string(row->name) + usage);
}

} // namespace

Result<Options> Options::parse(std::span<const char* const> arguments) {
    Options options;
    bool readsOptions = true;
    for (std::size_t index = 0; index < arguments.size(); ++index) {
        const std::string word = arguments[index];
        if (!readsOptions || !word.starts_with("--")) {
            CHECK(takeWord(options, word));
            continue;
        }
        if (word == "--") {
            readsOptions = false;
            continue;
        }
        const auto* row = std::ranges::find(optionRows, word, &OptionRow::name);
        if (row == optionRows.end()) return wrongUsage("Volbu '" + word + "' neznám.");
        bool lacksValue =
            !row->value.empty() && (index + 1 == arguments.size() || *arguments[index + 1] == 0);
        if (lacksValue) return wrongUsage(word + " chce hodnotu " + std::string(row->value) + ".");
        std::string value = row->value.empty() ? "" : arguments[++index];
        CHECK(row->take(options, value));
        if (options.command == Command::help || options.command == Command::version) return options;
    }
    CHECK(checkArguments(options));
    return options;
}

std::string Options::help() {
    std::string help = "Použití: morvex-phone [VOLBY] [PŘÍKAZ] [ARGUMENTY]\n"
                       "Telefon pro terminál: spáruje se s Macem, ukáže jeho stav a volá jeho nástroje.\n\n";
    for (const auto& row : commands) appendRow(help, row.name, row.arguments, row.summary);
    help += "\n";
    for (const auto& row : optionRows) appendRow(help, row.name, row.value, row.summary);
    return help.append(endOfHelp);
}

Result<std::filesystem::path> dataFolder(const Options& options) {
    if (options.data) return std::filesystem::absolute(*options.data);
    const char* dataHome = std::getenv("XDG_DATA_HOME");
    const char* home = std::getenv("HOME");
    std::filesystem::path base = dataHome ? dataHome : "";
    if (!base.is_absolute()) base = home ? std::filesystem::path{home} / ".local/share" : "";
    if (!base.is_absolute()) return wrongUsage("Chybí XDG_DATA_HOME i HOME. Zadej --data DIR.");
    return base / "morvex-phone";
}

} // namespace morvex
