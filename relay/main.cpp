#include "platform/posix/base/Kernel.h"
#include "platform/posix/base/LogQueue.h"
#include "platform/posix/base/Process.h"
#include "relay/FrameBuffer.h"
#include "relay/RelayServer.h"
#include "shared/base/Try.h"

#include <chrono>
#include <cstdlib>
#include <iostream>
#include <span>
#include <string>

namespace {

using namespace morvex;

constexpr int wrongUsage = 2;

int complain(const Error& error, int exitCode) {
    std::cerr << "morvex-relay: " << error.popis().czech() << '\n';
    return exitCode;
}

/// Many systems allow fewer open files than the relay's connections need, until asked. Fails where even then
/// they are too few: the relay would turn devices away below its limit.
Result<void> makeRoomFor(std::size_t connections) {
    constexpr std::size_t otherFiles = 64;
    const auto needed = connections + otherFiles;
    const auto allowed = raiseFileLimit();
    if (allowed >= needed) return {};
    return fail(TextError{"--connections " + std::to_string(connections) + " needs " +
                          std::to_string(needed) + " open files, and this system allows " +
                          std::to_string(allowed) + " (ulimit -Hn)"});
}

RelayLog logTo(LogQueue& queue) {
    return [&queue](std::string_view line) {
        const auto now = std::chrono::time_point_cast<Date::duration>(std::chrono::system_clock::now());
        queue.write(formatDate(now) + ' ' + std::string{line});
    };
}

Result<std::unique_ptr<RelayServer>> start(const RelayOptions& options, LogQueue& queue) {
    TRY(const auto, file,
        options.database ? Result<std::filesystem::path>{*options.database} : defaultDatabase());
    TRY(auto, store, PairStore::open(file));
    RelayLimits limits;
    limits.connections = options.connections;
    return RelayServer::create(options, limits, std::move(store), logTo(queue));
}

int serve(const RelayOptions& options) {
    surviveGoneReaders();
    if (auto raised = makeRoomFor(options.connections); !raised)
        return complain(raised.error(), EXIT_FAILURE);
    // What long frames held goes back to the system at once.
    kernel::releaseBlocksFrom(FrameBuffer::longestPiece);
    LogQueue queue{standardError};
    auto server = start(options, queue);
    if (!server) return complain(server.error(), EXIT_FAILURE);
    (*server)->stopOnSignals();
    std::cout << "listening on " << (*server)->address() << std::endl;
    (*server)->run();
    // The end of the server gives up the signals, and one more of them is no reason to die of it.
    blockEndSignals();
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
