#include "app/execution/TerminalGate.h"

#include "app/execution/CheckedPath.h"
#include "app/execution/TerminalChyba.h"
#include "foundation/Paths.h"
#include "foundation/Text.h"
#include "shared/base/Try.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace morvex::TerminalGate {

namespace {

template <std::size_t count> using Words = std::array<std::string_view, count>;

constexpr Words<18> allowedPrograms = {"ls",    "cat",  "head",    "tail",       "wc",  "file",
                                       "stat",  "grep", "rg",      "find",       "du",  "df",
                                       "swift", "node", "python3", "xcodebuild", "npm", "git"};

/// Refused for every program, so even a search for such a word is refused.
constexpr Words<22> changing = {"install", "uninstall", "publish", "update",   "upgrade", "add",
                                "remove",  "push",      "pull",    "fetch",    "clone",   "commit",
                                "merge",   "rebase",    "reset",   "checkout", "clean",   "rm",
                                "mv",      "init",      "tag",     "stash"};

constexpr Words<12> allowedForGit = {"status", "log",      "diff",  "show",     "branch",   "remote",
                                     "config", "describe", "blame", "shortlog", "ls-files", "rev-parse"};

constexpr Words<3> startingOthers = {"-exec", "-execdir", "-delete"};
constexpr Words<2> remoteHelpers = {"--upload-pack", "--receive-pack"};

bool contains(const auto& words, std::string_view word) {
    return std::ranges::find(words, word) != words.end();
}

/// The first word that is not an option, in lower case. The value of an option before it counts as that word.
std::optional<std::string> subcommand(const std::vector<std::string>& argumenty) {
    auto found = std::ranges::find_if(argumenty, [](const auto& word) { return !word.starts_with('-'); });
    return found == argumenty.end() ? std::nullopt : std::optional(lowerCase(*found));
}

bool needsTheUser(std::string_view program, std::string_view word) {
    return contains(changing, word) || (program == "git" && !contains(allowedForGit, word));
}

std::optional<std::string> suspicion(const std::string& argument) {
    if (contains(startingOthers, argument))
        return "obsahuje " + argument + ", což umí spustit cokoli dalšího";
    if (std::ranges::any_of(remoteHelpers, [&](auto helper) { return argument.starts_with(helper); }))
        return "obsahuje " + argument;
    return std::nullopt;
}

} // namespace

Result<std::string> allowedProgram(const std::string& program, const std::vector<std::string>& argumenty) {
    auto name = paths::lastComponent(program);
    if (!contains(allowedPrograms, name)) return fail(TerminalChyba{TerminalChyba::ZakazanyProgram{name}});
    if (auto word = subcommand(argumenty); word && needsTheUser(name, *word))
        return fail(TerminalChyba{TerminalChyba::VyzadujePotvrzeni{name + " " + *word}});
    for (const auto& argument : argumenty)
        if (auto reason = suspicion(argument))
            return fail(TerminalChyba{TerminalChyba::PodezreleArgumenty{*reason}});
    return name;
}

Result<std::string> workingFolder(const std::optional<std::string>& slozka, const AllowedFolders& slozky) {
    if (auto found = slozky.slozkaProAlias(slozka)) return *found;
    return fail(TerminalChyba{TerminalChyba::MimoPovolene{slozka.value_or("(neurčena)")}});
}

bool isPath(const std::string& argument) {
    return argument.starts_with('/') || argument.starts_with('~');
}

Result<void> checkPaths(const std::vector<std::string>& argumenty, const AllowedFolders& slozky) {
    for (const auto& argument : argumenty) {
        if (isPath(argument)) CHECK(overCestu(argument, std::nullopt, slozky));
    }
    return {};
}

} // namespace morvex::TerminalGate
