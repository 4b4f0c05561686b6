#include "app/execution/SouboryChyba.h"
#include "app/execution/TerminalChyba.h"
#include "app/execution/TerminalGate.h"
#include "fuzz/TreeWithSecrets.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace {

using namespace morvex;
using Words = std::set<std::string, std::less<>>;

// What may run and what may not, written down once more, so that a change of the gate is noticed here.
const Words programs = {"ls",   "cat", "head", "tail",  "wc",   "file",    "stat",       "grep", "rg",
                        "find", "du",  "df",   "swift", "node", "python3", "xcodebuild", "npm",  "git"};
const Words changing = {"install", "uninstall", "publish", "update",   "upgrade", "add",
                        "remove",  "push",      "pull",    "fetch",    "clone",   "commit",
                        "merge",   "rebase",    "reset",   "checkout", "clean",   "rm",
                        "mv",      "init",      "tag",     "stash"};
const Words readingOfGit = {"status", "log",      "diff",  "show",     "branch",   "remote",
                            "config", "describe", "blame", "shortlog", "ls-files", "rev-parse"};

bool isForbidden(const std::string& argument) {
    return argument == "-exec" || argument == "-execdir" || argument == "-delete" ||
           argument.starts_with("--upload-pack") || argument.starts_with("--receive-pack");
}

/// The first argument that is no option, as a program sees it that does not care for the case.
std::optional<std::string> subcommand(const std::vector<std::string>& arguments) {
    for (auto argument : arguments) {
        if (argument.starts_with('-')) continue;
        for (auto& letter : argument)
            if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
        return argument;
    }
    return std::nullopt;
}

std::vector<std::string> lines(std::string_view text) {
    std::vector<std::string> all;
    for (;;) {
        auto end = text.find('\n');
        all.emplace_back(text.substr(0, end));
        if (end == std::string_view::npos) return all;
        text.remove_prefix(end + 1);
    }
}

void judgeProgram(const std::string& program, const std::vector<std::string>& arguments) {
    const auto name = TerminalGate::povolenyProgram(program, arguments);
    if (!name) return vyzaduj(name.error().as<TerminalChyba>() != nullptr, "a refusal without a sentence");
    vyzaduj(programs.contains(*name) && program.contains(*name), "a program that is not allowed");
    vyzaduj(std::ranges::none_of(arguments, isForbidden), "a forbidden argument passed");
    const auto word = subcommand(arguments);
    if (!word) return;
    vyzaduj(!changing.contains(*word), "a changing word passed");
    vyzaduj(*name != "git" || readingOfGit.contains(*word), "a subcommand of git passed that may change");
}

void judgePaths(const std::vector<std::string>& arguments, const TreeWithSecrets& tree) {
    static const auto slozky = tree.allowed();
    const auto passed = TerminalGate::overCesty(arguments, slozky);
    if (!passed) return vyzaduj(passed.error().as<SouboryChyba>() != nullptr, "a refusal without a sentence");
    for (const auto& argument : arguments) {
        vyzaduj(TerminalGate::jeCesta(argument) ==
                    (!argument.empty() && (argument[0] == '/' || argument[0] == '~')),
                "a path that is taken for none");
        if (!TerminalGate::jeCesta(argument)) continue;
        const auto checked = overCestu(argument, std::nullopt, slozky);
        vyzaduj(checked.has_value(), "an unchecked path passed");
        tree.expectHarmless(*checked);
    }
}

} // namespace

/// A command of an assistant: the first line is the program, every further one an argument.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const TreeWithSecrets tree;
    auto arguments = lines(asText({data, size}));
    const auto program = arguments.front();
    arguments.erase(arguments.begin());
    for (auto& argument : arguments) argument = tree.placed(std::move(argument));
    judgeProgram(program, arguments);
    judgePaths(arguments, tree);
    return 0;
}
