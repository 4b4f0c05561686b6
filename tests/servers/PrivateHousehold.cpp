#include "tests/servers/PrivateHousehold.h"

#include "tests/servers/TestNetwork.h"

#include <fstream>

namespace morvex {

PrivateHousehold::PrivateHousehold() {
    const auto identity = testNetwork().authority.issue("DNS:relay.example");
    const auto certificate = temporary.path() / "relay.crt";
    const auto key = temporary.path() / "relay.key";
    std::ofstream(certificate) << identity.certificate;
    std::ofstream(key) << identity.key;
    relay = std::make_unique<Program>("morvex-relay",
                                      std::vector<std::string>{"--listen", "127.0.0.2:443", "--db",
                                                               ":memory:", "--cert", certificate.string(),
                                                               "--key", key.string()},
                                      environment("relay"));
    relay->waitForLine("listening on ");
    relayAddress = "https://relay.example";
}

} // namespace morvex
