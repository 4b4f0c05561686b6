#include "tests/servers/TestNetwork.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace morvex {
namespace {

std::unique_ptr<TestNetwork> made;

/// Why the packages of the servers are not there; nothing if they are.
std::optional<std::string> lackOfPackages() {
    const std::filesystem::path servers = MORVEX_SERVERS_DIR;
    if (std::filesystem::exists(servers / "fetched")) return std::nullopt;
    std::string reason;
    std::getline(std::ifstream(servers / "refusal"), reason);
    return reason.empty() ? "the packages of the servers are not there; the test node-servers fetches them."
                          : reason;
}

/// Why the tests cannot run here; nothing if they can from now on.
std::optional<std::string> refusalToBegin() {
    if (auto lack = lackOfPackages()) return lack;
    made = std::make_unique<TestNetwork>();
    auto network = PrivateNetwork::enter();
    if (!network) return network.error();
    made->network = std::move(*network);
    for (const char* name : {"apps.example", "servers.example", "imap.example", "smtp.example"})
        made->network->addName(name);
    made->network->addName("relay.example", "127.0.0.2");
    made->network->trust(made->authority.certificate());
    return std::nullopt;
}

} // namespace

TestNetwork& testNetwork() {
    return *made;
}

} // namespace morvex

/// The tests run in a private network, with servers of npm. Where one of them is not to be had, ctest counts
/// the tests as skipped by the exit code, and `./test` repeats the line with the reason.
int main(int argc, char** argv) {
    constexpr int skipped = 77;
    testing::InitGoogleTest(&argc, argv);
    if (const auto refusal = morvex::refusalToBegin()) {
        std::cerr << "SKIPPED  server-tests: " << *refusal << '\n';
        return skipped;
    }
    const auto failed = RUN_ALL_TESTS();
    morvex::made.reset();
    return failed;
}
