#pragma once

#include "relay/RelayLimits.h"
#include "shared/base/Error.h"

#include <cstddef>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace morvex {

/// What the command line asks for. All texts here are for the operator.
struct RelayOptions {
    enum class Task { serve, showHelp, showVersion };

    /// The files of a certificate chain and its private key, both PEM.
    struct Tls {
        std::filesystem::path certificate;
        std::filesystem::path key;
        bool operator==(const Tls&) const = default;
    };

    Task task = Task::serve;
    std::string host = "127.0.0.1";
    std::string port = "8787";
    /// Nothing: the default place. `:memory:` keeps the pairs only as long as the program runs.
    std::optional<std::filesystem::path> database;
    std::optional<Tls> tls;
    std::size_t connections = RelayLimits{}.connections;

    static const std::string_view help;

    /// `arguments` without the program's name. The failure's text says what is wrong.
    static Result<RelayOptions> parse(std::span<const char* const> arguments);

    bool operator==(const RelayOptions&) const = default;
};

/// `$XDG_DATA_HOME/morvex-relay/relay.db`, its folder made with access for the owner only.
Result<std::filesystem::path> defaultDatabase();

} // namespace morvex
