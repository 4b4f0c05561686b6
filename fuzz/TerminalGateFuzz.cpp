#include "app/execution/OverenaCesta.h"
#include "app/execution/SouboryChyba.h"
#include "app/execution/TerminalChyba.h"
#include "app/execution/TerminalGate.h"
#include "platform/memory/FixedFolders.h"
#include "shared/base/Bytes.h"
#include "shared/base/Require.h"

#include <algorithm>
#include <set>
#include <string>
#include <vector>

namespace {

using namespace morvex;

const std::set<std::string, std::less<>> programs = {"ls",    "cat",  "head",    "tail",       "wc",  "file",
                                                     "stat",  "grep", "rg",      "find",       "du",  "df",
                                                     "swift", "node", "python3", "xcodebuild", "npm", "git"};

/// What no command that passes may have.
bool isForbidden(const std::string& argument) {
    return argument == "-exec" || argument == "-execdir" || argument == "-delete" ||
           argument.starts_with("--upload-pack") || argument.starts_with("--receive-pack");
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

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const FixedFolders standard;
    static const PovoleneSlozky slozky({"/nonexistent/Projects"}, standard);
    // The first line is the program, every further one an argument.
    auto args = lines(asText({data, size}));
    auto program = args.front();
    args.erase(args.begin());

    auto name = TerminalGate::povolenyProgram(program, args);
    if (name) {
        vyzaduj(programs.contains(*name) && program.contains(*name), "a program that is not allowed");
        vyzaduj(std::ranges::none_of(args, isForbidden), "a forbidden argument passed");
        bool pushes = *name == "git" && !args.empty() && (args[0] == "push" || args[0] == "gc");
        vyzaduj(!pushes && (args.empty() || args[0] != "clean"), "a changing word passed");
    } else {
        vyzaduj(name.error().as<TerminalChyba>() != nullptr, "a refusal without a sentence");
    }

    auto paths = TerminalGate::overCesty(args, slozky);
    for (const auto& argument : args) {
        if (!paths || !TerminalGate::jeCesta(argument)) continue;
        vyzaduj(overCestu(argument, std::nullopt, slozky).has_value(), "an unchecked path passed");
    }
    if (!paths) vyzaduj(paths.error().as<SouboryChyba>() != nullptr, "a refusal without a sentence");
    return 0;
}
