#pragma once

#include "shared/base/Error.h"

#include <chrono>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace morvex {

/// How to answer when the Mac asks for an approval while a command waits.
enum class ApprovalPolicy { ask, yes, no, leave };

/// The command line.
struct Options {
    enum class Command {
        pair,
        status,
        tools,
        call,
        tasks,
        notes,
        summaries,
        watch,
        approve,
        key,
        preferences,
        apps,
        shell,
        unpair,
        help,
        version
    };

    static constexpr std::string_view preferencesArguments =
        "[language CODE | voice NAME | place NAME [ADDRESS]]";
    static constexpr std::string_view appsArguments = "list | add NAME ADDRESS | remove NAME";

    std::optional<Command> command; ///< absent: a shell, if there is a terminal
    std::vector<std::string> arguments;
    std::optional<std::filesystem::path> data;
    std::chrono::seconds timeout{30};
    std::optional<ApprovalPolicy> approve; ///< absent: ask on a terminal, else leave it to the Mac
    bool isJson = false;
    bool isOffline = false;   ///< change records only here and deliver them later
    bool isConfirmed = false; ///< do not ask about the pairing number

    /// `arguments` without the program's name. Fails with a `PhoneError` of wrong usage.
    static Result<Options> parse(std::span<const char* const> arguments);

    /// The text of `--help`.
    static std::string help();

    bool operator==(const Options&) const = default;
};

/// The folder of `--data`, or `$XDG_DATA_HOME/morvex-phone`.
Result<std::filesystem::path> dataFolder(const Options& options);

} // namespace morvex
