#include "shared/base/SystemTrouble.h"
#include "tests/e2e/EndToEnd.h"
#include "tests/support/TestAuthority.h"

#include <fstream>

namespace morvex {
namespace {

/// A relay with a self-signed certificate.
class PrivateAuthorityTest : public EndToEnd {
  protected:
    PrivateAuthorityTest() {
        const auto identity = TestAuthority::issueToItself("DNS:localhost");
        std::ofstream(certificate) << identity.certificate;
        std::ofstream(key) << identity.key;
        relay = std::make_unique<Program>("morvex-relay",
                                          std::vector<std::string>{"--listen", "127.0.0.1:0", "--db",
                                                                   ":memory:", "--cert", certificate.string(),
                                                                   "--key", key.string()},
                                          environment("relay"));
        const auto line = relay->waitForLine("listening on ");
        relayAddress = "https://localhost" + line.substr(line.rfind(':'));
    }

    const std::filesystem::path certificate = temporary.path() / "relay.crt";
    const std::filesystem::path key = temporary.path() / "relay.key";
};

TEST_F(PrivateAuthorityTest, IsRefusedWithTheRemedyUntilThisComputerIsToldToTrustIt) {
    {
        auto mac = startMac();
        mac->type("parovat");
        mac->waitForLine("Párování: " + popis(SystemTrouble::certificateUntrusted).czech());
        mac->type("konec");
        EXPECT_EQ(mac->wait(), 0);
    }
    shared["SSL_CERT_FILE"] = certificate.string();
    auto mac = startMac();
    pair(*mac);
    const auto status = phone({"status"});
    EXPECT_EQ(status.code, 0) << status.output << mac->output();
}

TEST_F(EndToEnd, AnAddressWithHttpsOfARelayWithoutTlsIsAnsweredWithTheRemedy) {
    auto mac = startMac();
    mac->type("relay https" + relayAddress.substr(relayAddress.find("://")));
    mac->type("parovat");
    mac->waitForLine("Párování: " + popis(SystemTrouble::tlsRefused).czech());
}

TEST_F(EndToEnd, AnAddressWithoutItsSchemeIsAnsweredWithTheCorrectedOneAndNotKept) {
    auto mac = startMac();
    mac->type("relay " + relayAddress.substr(relayAddress.find("://") + 3));
    mac->waitForLine("Adresa relaye začíná https:// nebo http://. Napiš „" + relayAddress + "“.");
    mac->type("relay nesmysl nebo co");
    mac->waitForLine("Adresa relaye nedává smysl.");
    mac->type("stav");
    mac->waitForLine("Relay: " + relayAddress);
}

} // namespace
} // namespace morvex
