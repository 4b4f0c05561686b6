#include "app/programs/ProgramDiscovery.h"

#include "app/programs/ProcessRunner.h"
#include "foundation/Paths.h"
#include "foundation/Text.h"
#include "platform/posix/base/PathEntry.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace morvex {

namespace {

constexpr std::chrono::seconds timeLimit{8};
/// Only the last line counts; a start-up file may write whatever it likes before it.
constexpr Capture capture{.vystup = 1024 * 1024, .outputPart = Capture::Part::ending, .chyby = 0};

/// A leading ~ is the home folder of the account.
constexpr std::array<std::string_view, 18> wellKnown = {
    "/opt/homebrew/bin",
    "/usr/local/bin",
    "/usr/bin",
    "/bin",
    "/usr/sbin",
    "/sbin",
    "~/.local/bin",
    "~/.bun/bin",
    "~/.deno/bin",
    "~/.volta/bin",
    "~/.npm-global/bin",
    "~/.yarn/bin",
    "~/.cargo/bin",
    "~/.claude/local",
    "~/.codex/bin",
    "~/Library/pnpm",
    "~/.local/share/pnpm",
    "/opt/homebrew/opt/node/bin",
};

struct PackageManager {
    const char* name;
    std::vector<std::string> args;
    std::string_view suffix; ///< from its answer to the folder of the binaries
};

const std::array<PackageManager, 4> packageManagers = {{
    {"npm", {"config", "get", "prefix"}, "/bin"},
    {"pnpm", {"bin", "-g"}, ""},
    {"yarn", {"global", "bin"}, ""},
    {"bun", {"pm", "bin", "-g"}, ""},
}};

/// Without the empty parts.
std::vector<std::string> split(std::string_view text, char separator) {
    std::vector<std::string> parts;
    while (!text.empty()) {
        auto end = std::min(text.find(separator), text.size());
        if (end > 0) parts.emplace_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return parts;
}

/// The last line that is not empty.
std::string lastLine(const VysledekProcesu& result) {
    auto lines = split(result.vystup, '\n');
    if (lines.empty()) return "";
    // Where the text was cut, its first line may be the end of a longer one.
    const bool isWhole = lines.size() > 1 || !result.isOutputCut || result.vystup.starts_with('\n');
    return isWhole ? std::move(lines.back()) : "";
}

void append(std::vector<std::string>& all, std::vector<std::string> more) {
    all.insert(all.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
}

/// Trimmed, each folder once. What is not absolute goes: it would mean another folder to each program, also
/// one that a stranger has filled, and a shell that refuses to start says so where its path is expected.
std::string normalized(const std::vector<std::string>& entries) {
    std::vector<std::string> kept;
    for (const auto& entry : entries)
        if (auto folder = trim(entry);
            folder.starts_with('/') && std::ranges::find(kept, folder) == kept.end())
            kept.push_back(std::move(folder));
    return join(kept, ":");
}

std::optional<ProgramDiscovery::FoundProgram> search(const std::vector<std::string>& names,
                                                     std::string_view path) {
    auto folders = split(path, ':');
    for (const auto& name : names)
        for (auto& folder : folders)
            if (auto binary = paths::below(folder, name); isExecutableFile(binary))
                return ProgramDiscovery::FoundProgram{std::move(binary), std::move(folder)};
    return std::nullopt;
}

} // namespace

Task<std::string> ProgramDiscovery::prihlasovaciPath(Cache cache) {
    std::shared_ptr<OneShot<bool>> otherLook;
    {
        std::lock_guard lock(zamek_);
        if (path_ && cache == Cache::use) co_return *path_;
        if (isDetecting_)
            cekajici_.push_back(otherLook = std::make_shared<OneShot<bool>>());
        else
            isDetecting_ = true;
    }
    if (otherLook) {
        co_await otherLook->wait();
        co_return co_await prihlasovaciPath();
    }
    auto path = co_await detectPath();
    std::vector<std::shared_ptr<OneShot<bool>>> cekajici;
    {
        std::lock_guard lock(zamek_);
        path_ = path;
        isDetecting_ = false;
        cekajici.swap(cekajici_);
    }
    for (const auto& waiter : cekajici) waiter->answer(true);
    co_return path;
}

Task<std::string> ProgramDiscovery::detectPath() {
    auto entries = co_await zeShellu();
    append(entries, split(ownVariable("PATH"), ':'));
    append(entries, knownDirectories());
    auto path = normalized(entries);
    entries = split(path, ':');
    append(entries, co_await fromPackageManagers(path));
    co_return normalized(entries);
}

Task<std::optional<ProgramDiscovery::FoundProgram>>
ProgramDiscovery::najdiBinarku(std::vector<std::string> jmena) {
    auto path = co_await prihlasovaciPath();
    co_return co_await runOn(workers_, [&jmena, &path] { return search(jmena, path); });
}

Task<Environment> ProgramDiscovery::prostrediNastroju() {
    auto environment = account_.environment;
    environment["PATH"] = co_await prihlasovaciPath();
    environment["NO_COLOR"] = "1";
    environment["FORCE_COLOR"] = "0";
    environment["CI"] = "1";
    environment["TERM"] = "dumb";
    co_return environment;
}

/// Interactive, since only so are the user's start-up files read.
Task<std::vector<std::string>> ProgramDiscovery::zeShellu() {
    if (!account_.environment.contains("SHELL")) co_return std::vector<std::string>{};
    auto answer = co_await lastLineOf({.binary = ownVariable("SHELL"),
                                       .args = {"-ilc", R"(command -p echo "$PATH")"},
                                       .cwd = {},
                                       .env = account_.environment});
    co_return split(answer, ':');
}

Task<std::vector<std::string>> ProgramDiscovery::fromPackageManagers(std::string path) {
    std::vector<std::string> folders;
    for (const auto& manager : packageManagers) {
        auto found = co_await runOn(workers_, [&] { return search({manager.name}, path); });
        if (!found) continue;
        OutsideProgram program{
            .binary = found->binary, .args = manager.args, .cwd = {}, .env = {{"PATH", path}}};
        auto answer = trim(co_await lastLineOf(std::move(program)));
        if (answer.starts_with('/')) folders.push_back(answer.append(manager.suffix));
    }
    co_return folders;
}

/// Of the standard output, whatever the status; empty when there is none or the program did not start.
Task<std::string> ProgramDiscovery::lastLineOf(OutsideProgram program) {
    if (stop_.stop_requested()) co_return "";
    ProcessRunner runner(launcher_, clock_);
    std::stop_callback cancel(stop_, [&runner] { runner.zrusit(); });
    auto result = co_await runner.spustit(std::move(program), timeLimit, {}, capture);
    co_return result ? lastLine(*result) : "";
}

std::vector<std::string> ProgramDiscovery::knownDirectories() const {
    std::vector<std::string> folders;
    for (auto folder : wellKnown)
        folders.push_back(folder.starts_with('~') ? account_.home + std::string(folder.substr(1))
                                                  : std::string(folder));
    return folders;
}

std::string ProgramDiscovery::ownVariable(const std::string& variable) const {
    auto found = account_.environment.find(variable);
    return found == account_.environment.end() ? "" : found->second;
}

} // namespace morvex
