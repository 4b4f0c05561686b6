#include "relay/RelayServer.h"
#include "shared/base/Try.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <iostream>
#include <span>
#include <sys/resource.h>

namespace {

using namespace morvex;

constexpr int wrongUsage = 2;

int complain(const Error& error, int exitCode) {
    std::cerr << "morvex-relay: " << error.popis() << '\n';
    return exitCode;
}

/// Many systems allow fewer open files than the relay's connections need, until asked.
void raiseFileLimit() {
    rlimit limit{};
    if (getrlimit(RLIMIT_NOFILE, &limit) != 0) return;
    limit.rlim_cur = limit.rlim_max;
    setrlimit(RLIMIT_NOFILE, &limit);
}

void logLine(std::string_view line) {
    const auto now = std::chrono::time_point_cast<Date::duration>(std::chrono::system_clock::now());
    std::cerr << formatDate(now) << ' ' << line << '\n';
}

Result<std::unique_ptr<RelayServer>> start(const RelayOptions& options) {
    TRY(const auto, file,
        options.database ? Result<std::filesystem::path>{*options.database} : defaultDatabase());
    TRY(auto, store, PairStore::open(file));
    return RelayServer::create(options, RelayLimits{}, std::move(store), logLine);
}

int serve(const RelayOptions& options) {
    std::signal(SIGPIPE, SIG_IGN);
    raiseFileLimit();
    auto server = start(options);
    if (!server) return complain(server.error(), EXIT_FAILURE);
    (*server)->stopOnSignals();
    std::cout << "listening on " << (*server)->address() << std::endl;
    (*server)->run();
    return EXIT_SUCCESS;
}

} // namespace

int main(int argumentCount, char** arguments) {
    const auto options =
        RelayOptions::parse(std::span<const char* const>{arguments + 1, arguments + argumentCount});
    if (!options) return complain(options.error(), wrongUsage);
    switch (options->task) {
    case RelayOptions::Task::showHelp:
        std::cout << RelayOptions::help;
        return EXIT_SUCCESS;
    case RelayOptions::Task::showVersion:
        std::cout << "morvex-relay " MORVEX_VERSION "\n";
        return EXIT_SUCCESS;
    case RelayOptions::Task::serve:
        return serve(*options);
    }
}
