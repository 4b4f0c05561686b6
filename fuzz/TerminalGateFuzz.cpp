// A command of an assistant. The first line contains the program and, after a tab, the name of the folder;
// every further line is an argument. The expected decision of the gates is computed independently here and
// compared.

#include "app/execution/TerminalChyba.h"
#include "app/execution/TerminalGate.h"
#include "fuzz/PathJudge.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace {

using namespace morvex;
using Words = std::set<std::string, std::less<>>;
using Refusal = std::optional<decltype(TerminalChyba::kind)>;

// The rules of the gate are repeated here, so that a change of the gate is noticed.
const Words programs = {"ls",   "cat", "head", "tail",  "wc",   "file",    "stat",       "grep", "rg",
                        "find", "du",  "df",   "swift", "node", "python3", "xcodebuild", "npm",  "git"};
const Words changing = {"install", "uninstall", "publish", "update",   "upgrade", "add",
                        "remove",  "push",      "pull",    "fetch",    "clone",   "commit",
                        "merge",   "rebase",    "reset",   "checkout", "clean",   "rm",
                        "mv",      "init",      "tag",     "stash"};
const Words readingOfGit = {"status", "log",      "diff",  "show",     "branch",   "remote",
                            "config", "describe", "blame", "shortlog", "ls-files", "rev-parse"};

struct Command {
    std::string program;
    std::optional<std::string> slozka;
    std::vector<std::string> arguments;
};

std::vector<std::string> split(std::string_view text, char separator) {
    std::vector<std::string> all;
    for (;;) {
        auto end = text.find(separator);
        all.emplace_back(text.substr(0, end));
        if (end == std::string_view::npos) return all;
        text.remove_prefix(end + 1);
    }
}

Command commandOf(std::string_view input, const TreeWithSecrets& tree) {
    auto lines = split(input, '\n');
    auto first = split(lines.front(), '\t');
    Command command{first.front(), {}, {lines.begin() + 1, lines.end()}};
    if (first.size() > 1) command.slozka = first[1];
    for (auto& argument : command.arguments) argument = tree.placed(std::move(argument));
    return command;
}

std::string lastComponent(std::string path) {
    while (path.size() > 1 && path.ends_with('/')) path.pop_back();
    return path == "/" ? path : repairUtf8(std::filesystem::path(path).filename().string());
}

/// The word that the user must confirm is the first argument that is not an option.
std::optional<std::string> wordForTheUser(const std::string& name, const Command& command) {
    for (const auto& argument : command.arguments) {
        if (argument.starts_with('-')) continue;
        auto word = lowerCase(argument);
        const bool reads = name == "git" ? readingOfGit.contains(word) : !changing.contains(word);
        return reads ? std::nullopt : std::optional(std::move(word));
    }
    return std::nullopt;
}

std::optional<std::string> suspicion(const Command& command) {
    for (const auto& argument : command.arguments) {
        if (argument == "-exec" || argument == "-execdir" || argument == "-delete")
            return "obsahuje " + argument + ", což umí spustit cokoli dalšího";
        if (argument.starts_with("--upload-pack") || argument.starts_with("--receive-pack"))
            return "obsahuje " + argument;
    }
    return std::nullopt;
}

/// The refusal of the first gate that refuses the program.
Refusal refusalOf(const std::string& name, const Command& command) {
    if (!programs.contains(name)) return TerminalChyba::ZakazanyProgram{name};
    if (const auto word = wordForTheUser(name, command))
        return TerminalChyba::VyzadujePotvrzeni{name + " " + *word};
    if (const auto reason = suspicion(command)) return TerminalChyba::PodezreleArgumenty{*reason};
    return std::nullopt;
}

void expectRefusal(const Error& error, const Refusal& expected) {
    const auto* refusal = error.as<TerminalChyba>();
    require(refusal && expected && refusal->kind == *expected, "another refusal than the rules give");
}

void judgeProgram(const Command& command) {
    const auto name = lastComponent(command.program);
    const auto expected = refusalOf(name, command);
    const auto allowed = TerminalGate::allowedProgram(command.program, command.arguments);
    if (!allowed) return expectRefusal(allowed.error(), expected);
    require(!expected && *allowed == name, "a command passed");
}

void judgeFolder(const Command& command, const PathJudge& judge, const AllowedFolders& slozky) {
    const auto expected = judge.folderNamed(command.slozka.value_or(""));
    const auto folder = TerminalGate::workingFolder(command.slozka, slozky);
    if (!folder && !expected)
        return expectRefusal(folder.error(),
                             TerminalChyba::MimoPovolene{command.slozka.value_or("(neurčena)")});
    require(folder && expected && *folder == *expected, "another working folder than the named one");
}

void judgePaths(const Command& command, const PathJudge& judge, const AllowedFolders& slozky) {
    const auto passed = TerminalGate::checkPaths(command.arguments, slozky);
    for (const auto& argument : command.arguments) {
        if (!argument.starts_with('/') && !argument.starts_with('~')) continue;
        const auto expected = judge.verdict(argument, "");
        // For a dangling link the path check has its own result.
        if (!expected) return;
        if (expected->kind == PathVerdict::passes) continue;
        return require(!passed && PathVerdict::of(passed.error()) == *expected,
                       "another refusal of a path than the rules give");
    }
    require(passed.has_value(), "paths inside are refused");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const TreeWithSecrets tree;
    static const PathJudge judge(tree);
    static const auto slozky = tree.allowed();
    const auto command = commandOf(asText({data, size}), tree);
    judgeProgram(command);
    judgeFolder(command, judge, slozky);
    judgePaths(command, judge, slozky);
    return 0;
}
