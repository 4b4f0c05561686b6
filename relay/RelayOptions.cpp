#include "relay/RelayOptions.h"

#include "platform/posix/base/PrivateFile.h"
#include "shared/base/Try.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <cstdlib>

namespace morvex {

const std::string_view RelayOptions::help =
    "Usage: morvex-relay [OPTION]...\n"
    "Forwards sealed messages between the two devices of a pair.\n"
    "\n"
    "  --listen HOST:PORT  address to serve (default 127.0.0.1:8787; port 0 takes a free one)\n"
    "  --db FILE           where pairs are kept (default $XDG_DATA_HOME/morvex-relay/relay.db;\n"
    "                      :memory: forgets them at the end)\n"
    "  --cert FILE         certificate chain in PEM, for TLS; needs --key\n"
    "  --key FILE          private key in PEM, for TLS; needs --cert\n"
    "  --connections COUNT how many there may be at a time, 1 to 1000000 (default 1024)\n"
    "  --help              show this text\n"
    "  --version           show the version\n";

namespace {

bool isPort(std::string_view text) {
    std::uint16_t port = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), port);
    return error == std::errc{} && end == text.data() + text.size();
}

/// `HOST:PORT`, a numeric IPv6 host in brackets.
Result<void> readAddress(RelayOptions& options, std::string_view address) {
    const auto colon = address.rfind(':');
    auto host = address.substr(0, colon);
    const bool isBracketed = host.size() >= 2 && host.front() == '[' && host.back() == ']';
    if (isBracketed) host = host.substr(1, host.size() - 2);
    const bool hasStrayColon = !isBracketed && host.contains(':');
    if (colon == std::string_view::npos || host.empty() || hasStrayColon ||
        !isPort(address.substr(colon + 1)))
        return fail(TextError{"--listen needs HOST:PORT, not '" + std::string{address} + "'"});
    options.host = host;
    options.port = address.substr(colon + 1);
    return {};
}

Result<void> readConnections(RelayOptions& options, std::string_view text) {
    constexpr std::size_t most = 1'000'000;
    const auto* end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, options.connections);
    if (read.ec == std::errc{} && read.ptr == end && options.connections > 0 && options.connections <= most)
        return {};
    return fail(TextError{"--connections needs a number from 1 to 1000000, not '" + std::string{text} + "'"});
}

} // namespace

Result<RelayOptions> RelayOptions::parse(std::span<const char* const> arguments) {
    RelayOptions options;
    Tls tls;
    for (std::size_t index = 0; index < arguments.size(); ++index) {
        const std::string name = arguments[index];
        if (name == "--help" || name == "--version") {
            options.task = name == "--help" ? Task::showHelp : Task::showVersion;
            return options;
        }
        constexpr std::array<std::string_view, 5> withValue{"--listen", "--db", "--cert", "--key",
                                                            "--connections"};
        if (std::ranges::find(withValue, name) == withValue.end())
            return fail(TextError{"unknown option '" + name + "'"});
        ++index;
        const std::string value = index < arguments.size() ? arguments[index] : "";
        if (value.empty()) return fail(TextError{name + " needs a value"});
        if (name == "--db") options.database = value;
        if (name == "--cert") tls.certificate = value;
        if (name == "--key") tls.key = value;
        if (name == "--listen") CHECK(readAddress(options, value));
        if (name == "--connections") CHECK(readConnections(options, value));
    }
    if (tls.certificate.empty() != tls.key.empty()) return fail(TextError{"--cert and --key go together"});
    if (!tls.key.empty()) options.tls = tls;
    return options;
}

Result<std::filesystem::path> defaultDatabase() {
    const char* dataHome = std::getenv("XDG_DATA_HOME");
    const char* home = std::getenv("HOME");
    std::filesystem::path base = dataHome ? dataHome : "";
    if (!base.is_absolute()) base = home ? std::filesystem::path{home} / ".local/share" : "";
    if (!base.is_absolute()) return fail(TextError{"neither XDG_DATA_HOME nor HOME is set; use --db FILE"});

    const auto folder = base / "morvex-relay";
    std::error_code error;
    std::filesystem::create_directories(base, error);
    if (!error) error = makePrivateFolder(folder);
    if (error) return fail(TextError{"cannot make " + folder.string() + ": " + error.message()});
    return folder / "relay.db";
}

} // namespace morvex
