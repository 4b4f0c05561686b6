#include "bench/Measure.h"
#include "bench/PlainSocket.h"
#include "relay/Database.h"
#include "relay/RelayServer.h"
#include "shared/base/Require.h"
#include "tests/support/TemporaryFolder.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

// Measures the time of a relay from opening its file to its first challenge: with 600,000 pairs that nobody
// joined and whose end has passed, compared with an empty file, and also with a file of the version before
// pairs had ends. Then measures the sweep that follows, and the size of the file afterwards.

namespace morvex {
namespace {

constexpr int pairs = 600'000;
constexpr int times = 3;

Date today() {
    return std::chrono::time_point_cast<Date::duration>(std::chrono::system_clock::now());
}

enum class Version { present, earlier };

void execute(const std::filesystem::path& file, const std::string& sql) {
    auto database = Database::open(file.string()).value();
    require(database.execute(sql).has_value(), "the file cannot be made");
}

/// Creates a file with this many pairs that wait to be forgotten.
void lay(const std::filesystem::path& file, int count, Version version) {
    std::filesystem::remove(file);
    require(PairStore::open(file).has_value(), "the store cannot be made");
    const auto ended = std::to_string(wholeSeconds(today() - std::chrono::hours{2}));
    const auto rows = "WITH RECURSIVE numbers (n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM numbers LIMIT " +
                      std::to_string(count) + ") ";
    if (count > 0)
        execute(file, "BEGIN;" + rows + "INSERT INTO pairs SELECT hex(randomblob(13)), randomblob(32), " +
                          ended + ", NULL, " + ended +
                          " FROM numbers; INSERT INTO members SELECT id, 'mac', hex(randomblob(16)),"
                          " randomblob(32) FROM pairs; COMMIT");
    if (version == Version::earlier)
        execute(file,
                "DROP INDEX pairsByEnd; DROP INDEX pairsByToken; ALTER TABLE pairs DROP COLUMN forgetAt;"
                "PRAGMA user_version = 1; PRAGMA journal_mode = DELETE; PRAGMA auto_vacuum = NONE; VACUUM");
}

/// Time until the relay sends its challenge to a device.
double startMilliseconds(const std::filesystem::path& file) {
    std::unique_ptr<RelayServer> server;
    std::thread thread;
    const auto took = milliseconds([&] {
        RelayOptions options;
        options.port = "0";
        server =
            RelayServer::create(options, {}, PairStore::open(file).value(), [](std::string_view) {}).value();
        thread = std::thread([&] { server->run(); });
        PlainSocket socket(server->port());
        require(socket.read().has_value(), "no challenge");
    });
    server->stop();
    thread.join();
    return took;
}

void benchStart(const char* what, const std::filesystem::path& folder, int count, Version version) {
    const auto laid = folder / "laid.db";
    const auto file = folder / "relay.db";
    lay(laid, count, version);
    std::vector<double> all;
    for (int run = 0; run < times; ++run) {
        std::filesystem::copy_file(laid, file, std::filesystem::copy_options::overwrite_existing);
        all.push_back(startMilliseconds(file));
    }
    std::printf("start to the first challenge with %s: %.1f ms\n", what, median(std::move(all)));
}

void benchSweep(const std::filesystem::path& file) {
    lay(file, pairs, Version::present);
    const auto before = std::filesystem::file_size(file);
    auto store = PairStore::open(file).value();
    double longest = 0;
    const auto all = milliseconds([&] {
        for (bool hasMore = true; hasMore;)
            longest = std::max(longest, milliseconds([&] { hasMore = store.sweep(today()).value(); }));
        for (bool hasMore = true; hasMore;)
            longest = std::max(longest, milliseconds([&] { hasMore = store.shrink().value(); }));
        require(PairStore::open(file).has_value(), "the store cannot be opened");
    });
    std::printf(
        "sweep of %d pairs without pauses: %.1f s, the longest step %.0f ms; the file shrinks from %.0f to ",
        pairs, all / 1000, longest, static_cast<double>(before) / (1024 * 1024));
    {
        const auto closed = std::move(store);
    }
    std::printf("%.1f MiB\n", static_cast<double>(std::filesystem::file_size(file)) / (1024 * 1024));
}

} // namespace
} // namespace morvex

int main() {
    using namespace morvex;
    TemporaryFolder folder;
    benchStart("no pair", folder.path(), 0, Version::present);
    benchStart("600,000 pairs", folder.path(), pairs, Version::present);
    benchStart("600,000 pairs of the earlier version", folder.path(), pairs, Version::earlier);
    benchSweep(folder.path() / "relay.db");
}
