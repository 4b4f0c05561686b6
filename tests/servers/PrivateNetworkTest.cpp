#include "foundation/ThreadExecutor.h"
#include "platform/net/CurlHttpClient.h"
#include "tests/servers/NodeServer.h"
#include "tests/servers/PrivateHousehold.h"
#include "tests/servers/TestNetwork.h"
#include "tests/support/Await.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

namespace morvex {
namespace {

bool succeedsInside(const std::string& command) {
    return std::system(("(" + command + ") </dev/null >/dev/null 2>&1").c_str()) == 0;
}

/// A server as its owner would give its address.
class PrivateNetworkTest : public testing::Test {
  protected:
    const TestAuthority& authority = testNetwork().authority;
    NodeServer server{"json", authority, "apps.example", 443};
};

TEST_F(PrivateNetworkTest, AServerIsReachedByItsNameAtThePortOfHttpsWithTheSystemsTrust) {
    CurlHttpClient client;
    ThreadExecutor executor{"test"};
    auto reply = await(executor, client.send({.method = "POST",
                                              .url = "https://apps.example/api/mcp",
                                              .headers = {{"Content-Type", "application/json"},
                                                          {"Accept", "application/json, text/event-stream"}},
                                              .body = R"({"jsonrpc":"2.0","id":1,"method":"tools/list"})"}));
    ASSERT_TRUE(reply) << reply.error().popis().czech();
    EXPECT_EQ(reply->status, 200);
    EXPECT_NE(reply->body.find(R"("name":"echo")"), std::string::npos) << reply->body;
}

TEST_F(PrivateNetworkTest, NothingOfItIsSeenOutside) {
    const TemporaryFolder folder;
    const auto trusted = folder.path() / "authority.pem";
    std::ofstream(trusted) << authority.certificate();
    const auto certificate = server.certificate().string();
    for (const std::string& command :
         {std::string("getent hosts apps.example"),
          "openssl verify -no-CApath -CAfile /etc/ssl/certs/ca-certificates.crt " + certificate,
          "openssl verify -no-CAfile -CApath /etc/ssl/certs " + certificate,
          "openssl s_client -connect 127.0.0.1:443 -verify_return_error -CAfile " + trusted.string()}) {
        EXPECT_TRUE(succeedsInside(command)) << command;
        EXPECT_FALSE(testNetwork().outside.succeeds(command)) << command;
    }
    // What both can do, so that the failures above are not the shell's.
    EXPECT_TRUE(
        testNetwork().outside.succeeds("openssl verify -CAfile " + trusted.string() + " " + certificate));
}

TEST_F(PrivateNetworkTest, LoopbackIsTheOnlyWay) {
    EXPECT_TRUE(succeedsInside("grep -q '^ *lo:' /proc/net/dev"));
    EXPECT_FALSE(succeedsInside("tail -n +3 /proc/net/dev | grep -v '^ *lo:'"));
}

class PrivateHouseholdTest : public testing::Test, protected PrivateHousehold {};

TEST_F(PrivateHouseholdTest, ComputerAndPhoneMeetAtARelayWithoutBeingToldWhomToTrust) {
    auto mac = startMac();
    pair(*mac);
    const auto status = phone({"status"});
    EXPECT_EQ(status.code, 0) << status.output << mac->output();
}

} // namespace
} // namespace morvex
