#include "app/execution/SouboryBridge.h"
#include "bench/Measure.h"
#include "foundation/ThreadExecutor.h"
#include "platform/memory/FixedFolders.h"
#include "tests/support/Await.h"
#include "tests/support/TemporaryFolder.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <fstream>
#include <string>

// Measures a search by name through as many files as an allowed folder may contain, as the tool does it,
// compared with `find`.

namespace morvex {
namespace {

constexpr int files = 200'000;
constexpr int filesInFolder = 100;
constexpr int rounds = 9;

/// Realistic names, half of them with letters beyond ASCII.
std::string nameOf(int number) {
    constexpr std::array<const char*, 6> words{"Faktura za energie", "Zápis ze schůze", "IMG",
                                               "Smlouva o dílo",     "export-data",     "Přehled účtů"};
    auto word = words[static_cast<std::size_t>(number) % words.size()];
    return std::string(word) + " " + std::to_string(number) + (number % 2 ? ".pdf" : ".txt");
}

void fill(const std::filesystem::path& root) {
    for (int number = 0; number < files; ++number) {
        auto folder = root / std::to_string(number / filesInFolder / 50) /
                      ("Složka " + std::to_string(number / filesInFolder));
        if (number % filesInFolder == 0) std::filesystem::create_directories(folder);
        std::ofstream(folder / nameOf(number));
    }
}

int linesOf(const std::string& command) {
    auto* output = ::popen(command.c_str(), "r");
    require(output != nullptr, "find cannot be started");
    std::array<char, 64UL * 1024> piece{};
    std::ptrdiff_t lines = 0;
    while (auto size = std::fread(piece.data(), 1, piece.size(), output))
        lines += std::count(piece.data(), piece.data() + size, '\n');
    require(::pclose(output) == 0, "find has failed");
    return static_cast<int>(lines);
}

} // namespace
} // namespace morvex

int main() {
    using namespace morvex;
    TemporaryFolder temporary;
    auto root = temporary.path() / "allowed";
    fill(root);
    ThreadExecutor home("home");
    ThreadExecutor worker("worker");
    FixedFolders standard;
    SouboryBridge bridge(worker);
    auto search = [&](const char* query, int expected) {
        auto found = await(home, bridge.hledej(query, {}, files, {{root.string()}, standard}, {}));
        require(found && std::cmp_equal(found->size(), expected), "the search has missed a file");
    };
    for (const char* query : {"FAKTURA", "199999", "účtů"}) {
        const auto find = "find " + root.string() + " -type f -iname '*" + query + "*'";
        const auto inLetters = "LC_ALL=C.UTF-8 " + find;
        // In bytes, `find` ignores only the case of ASCII letters.
        const auto inBytes = "LC_ALL=C " + find;
        auto expected = linesOf(inLetters);
        auto took = costs(rounds, {[&] { search(query, expected); }, [&] { linesOf(inLetters); },
                                   [&] { linesOf(inBytes); }});
        std::printf("%s, %d of %d files: search %.0f ms, find -iname %.0f ms (%.2f times), in bytes %.0f ms; "
                    "processor %.0f and %.0f ms (%.2f times), in bytes %.0f ms\n",
                    query, expected, files, took[0].wall, took[1].wall, took[0].wall / took[1].wall,
                    took[2].wall, took[0].processor, took[1].processor, took[0].processor / took[1].processor,
                    took[2].processor);
    }
}
