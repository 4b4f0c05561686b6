#include "tests/servers/NodeServer.h"

#include "foundation/ThreadExecutor.h"
#include "platform/net/CurlHttpClient.h"
#include "tests/servers/TestNetwork.h"
#include "tests/support/Await.h"

#include <gtest/gtest.h>

namespace morvex {
namespace {

/// What each kind of server is there for: how it answers one who sends nothing but the method, as a client of
/// its time does and a client of another time does not expect.
struct Kind {
    const char* name;
    int status;
    const char* contentType;
    const char* says;
};

constexpr const char* notInitialized = R"("code":-32000,"message":"Bad Request: Server not initialized")";
constexpr const char* unsupported = R"("code":-32022,)";
constexpr const char* echo = R"("name":"echo")";

class NodeServerTest : public testing::Test {
  protected:
    using Headers = std::vector<std::pair<std::string, std::string>>;

    HttpReply post(const NodeServer& server, const std::string& path, const std::string& body,
                   Headers headers = {}) {
        headers.emplace_back("Content-Type", "application/json");
        headers.emplace_back("Accept", "application/json, text/event-stream");
        auto reply = await(
            executor, client.send({.method = "POST",
                                   .url = "https://servers.example:" + std::to_string(server.port()) + path,
                                   .headers = std::move(headers),
                                   .body = body}));
        EXPECT_TRUE(reply) << reply.error().popis().czech();
        return reply ? *reply : HttpReply{};
    }

    static constexpr const char* list = R"({"jsonrpc":"2.0","id":1,"method":"tools/list"})";

    ThreadExecutor executor{"test"};
    CurlHttpClient client;
};

TEST_F(NodeServerTest, EveryKindAnswersABareListInItsWay) {
    for (const auto& kind : {Kind{"everything", 400, "application/json", notInitialized},
                             {"json", 200, "application/json", echo},
                             {"stream", 200, "text/event-stream", echo},
                             {"sessions", 400, "application/json", notInitialized},
                             {"sessions-pages", 400, "application/json", notInitialized},
                             {"second", 200, "text/event-stream", echo},
                             {"strict", 400, "application/json", unsupported},
                             {"strict-stream", 400, "application/json", unsupported},
                             {"strict-pages", 400, "application/json", unsupported}}) {
        SCOPED_TRACE(kind.name);
        const NodeServer server(kind.name, testNetwork().authority, "servers.example");
        const auto reply = post(server, "/api/mcp", list);
        EXPECT_EQ(reply.status, kind.status);
        const auto* type = reply.header("Content-Type");
        EXPECT_TRUE(type && *type == kind.contentType);
        EXPECT_NE(reply.body.find(kind.says), std::string::npos) << reply.body;
    }
}

TEST_F(NodeServerTest, ASessionLastsUntilTheServerIsToldToForgetIt) {
    const NodeServer server("sessions", testNetwork().authority, "servers.example");
    const auto begun = post(server, "/",
                            R"({"jsonrpc":"2.0","id":1,"method":"initialize","params":)"
                            R"({"protocolVersion":"2025-06-18","capabilities":{},)"
                            R"("clientInfo":{"name":"test","version":"1"}}})");
    const auto* session = begun.header("Mcp-Session-Id");
    ASSERT_NE(session, nullptr) << begun.body;
    EXPECT_EQ(post(server, "/", list, {{"Mcp-Session-Id", *session}}).status, 200);
    EXPECT_EQ(post(server, "/forget", "").status, 204);
    EXPECT_EQ(post(server, "/", list, {{"Mcp-Session-Id", *session}}).status, 404);
}

} // namespace
} // namespace morvex
