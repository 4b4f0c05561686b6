#include "app/customapps/McpServer.h"

#include "platform/memory/ManualClock.h"
#include "platform/memory/ManualExecutor.h"
#include "platform/memory/ScriptedHttp.h"
#include "shared/base/SystemTrouble.h"
#include "shared/wire/Json.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace morvex {
namespace {

using namespace std::chrono_literals;
using Headers = std::vector<std::pair<std::string, std::string>>;

const Headers plainHeaders{{"Content-Type", "application/json"},
                           {"Accept", "application/json, text/event-stream"}};

const std::string meta = R"("_meta":{"io.modelcontextprotocol/protocolVersion":"2026-07-28",)"
                         R"("io.modelcontextprotocol/clientInfo":{"name":"Morvex","version":"1"},)"
                         R"("io.modelcontextprotocol/clientCapabilities":{}})";

HttpReply reply(const std::string& body, int status = 200, Headers headers = {}) {
    return {status, body, std::move(headers)};
}

HttpReply result(const std::string& result, Headers headers = {}) {
    return reply(R"({"jsonrpc":"2.0","id":1,"result":)" + result + "}", 200, std::move(headers));
}

HttpReply refusal(int code, const std::string& data = "null", int status = 400) {
    return reply(R"({"jsonrpc":"2.0","error":{"code":)" + std::to_string(code) +
                     R"(,"message":"no","data":)" + data + "}}",
                 status);
}

const HttpReply notInitialized = refusal(-32000);
const HttpReply initialized = result(R"({"protocolVersion":"2025-06-18"})", {{"mcp-session-id", "s1"}});
const HttpReply accepted = reply("", 202);
const HttpReply tools = result(R"({"tools":[{"name":"a"}]})");
const HttpReply onlyNewest = refusal(-32022, R"({"supported":["2026-07-28"]})");

class McpServerTest : public testing::Test {
  protected:
    std::unique_ptr<McpServer> makeServer() {
        return std::make_unique<McpServer>(McpServer::Services{http, executor, clock, sequence},
                                           "https://a.example/api/mcp");
    }

    std::string list(const std::string& token = "") {
        auto listed = executor.run(server->listTools({token, clock.sinceBoot() + 60s}));
        if (!listed) return "waits";
        if (!*listed) return listed->error().popis().czech();
        std::string names;
        for (const auto& tool : **listed) names += tool ? tool->described.name + " " : "- ";
        return names;
    }

    std::string call(const std::string& name) {
        auto answer = executor.run(server->callTool(name, {{"x", 1}}, {"", clock.sinceBoot() + 60s}));
        return *answer ? encode(**answer) : answer->error().popis().czech();
    }

    void script(std::vector<HttpReply> replies) {
        http.requests.clear();
        http.replies.assign(replies.begin(), replies.end());
    }

    [[nodiscard]] std::vector<std::string> methods() const {
        std::vector<std::string> names;
        for (const auto& request : http.requests)
            names.emplace_back(parseJson(request.body).value().at("method").as_string());
        return names;
    }

    /// The headers beyond those of every request.
    [[nodiscard]] Headers extraHeaders(std::size_t number) const {
        const auto& all = http.requests.at(number).headers;
        return {all.begin() + std::ssize(plainHeaders), all.end()};
    }

    ScriptedHttp http;
    ManualExecutor executor;
    ManualClock clock;
    std::int64_t sequence = 0;
    std::unique_ptr<McpServer> server = makeServer();
};

using Methods = std::vector<std::string>;

TEST_F(McpServerTest, ThePlainRequestIsExactlyTheOneThatIsTold) {
    script({tools, result("{}")});
    EXPECT_EQ(list("secret"), "a ");
    EXPECT_EQ(call("a"), "{}");
    ASSERT_EQ(http.requests.size(), 2U);
    const auto& first = http.requests[0];
    EXPECT_EQ(first.method, "POST");
    EXPECT_EQ(first.url, "https://a.example/api/mcp");
    EXPECT_EQ(first.timeLimit, 20s);
    EXPECT_EQ(first.replyLimit, 4U * 1024 * 1024);
    EXPECT_EQ(first.body, R"({"jsonrpc":"2.0","id":1,"method":"tools/list","params":{}})");
    Headers withToken{{"Authorization", "Bearer secret"}};
    withToken.insert(withToken.end(), plainHeaders.begin(), plainHeaders.end());
    EXPECT_EQ(first.headers, withToken);
    EXPECT_EQ(http.requests[1].headers, plainHeaders) << "no token, no header";
    EXPECT_EQ(http.requests[1].body,
              R"({"jsonrpc":"2.0","id":2,"method":"tools/call","params":{"name":"a","arguments":{"x":1}}})");
}

TEST_F(McpServerTest, APlainServerIsAskedForItsFirstPageAlone) {
    script({result(R"({"tools":[{"name":"a"}],"nextCursor":"2"})")});
    EXPECT_EQ(list(), "a ");
    EXPECT_EQ(http.requests.size(), 1U);
}

TEST_F(McpServerTest, AnyOtherFailureIsNotTriedInAnotherManner) {
    for (const auto& answer :
         {reply("Bad Request", 400), reply(R"({"error":"no"})", 400), refusal(-32000, "null", 404),
          refusal(-32000, "null", 500), refusal(-32022, R"({"supported":["2027-01-01"]})")}) {
        script({answer, tools, tools});
        EXPECT_EQ(list(), "Vlastní aplikace vrátila HTTP " + std::to_string(answer.status) + ".");
        EXPECT_EQ(http.requests.size(), 1U);
    }
}

TEST_F(McpServerTest, AStatefulServerGetsASessionOnce) {
    script({notInitialized, initialized, accepted, tools, result("{}")});
    EXPECT_EQ(list("secret"), "a ");
    EXPECT_EQ(call("a"), "{}");
    EXPECT_EQ(methods(),
              Methods({"tools/list", "initialize", "notifications/initialized", "tools/list", "tools/call"}));
    EXPECT_EQ(http.requests[1].body,
              R"({"jsonrpc":"2.0","id":2,"method":"initialize","params":{"protocolVersion":"2025-06-18",)"
              R"("capabilities":{},"clientInfo":{"name":"Morvex","version":"1"}}})");
    EXPECT_EQ(http.requests[1].headers.size(), plainHeaders.size() + 1) << "with the token";
    const Headers session{{"Mcp-Session-Id", "s1"}, {"MCP-Protocol-Version", "2025-06-18"}};
    EXPECT_EQ(extraHeaders(4), session);
    EXPECT_EQ(http.requests[2].body, R"({"jsonrpc":"2.0","method":"notifications/initialized"})");
}

TEST_F(McpServerTest, ASessionMayHaveNoIdAndTheServersVersion) {
    script({notInitialized, result(R"({"protocolVersion":"2025-03-26"})"), accepted, tools});
    EXPECT_EQ(list(), "a ");
    EXPECT_EQ(extraHeaders(3), (Headers{{"MCP-Protocol-Version", "2025-03-26"}}));
}

TEST_F(McpServerTest, ALostSessionBeginsAnewOnce) {
    for (const auto& lost : {reply("", 404), refusal(-32000)}) {
        server = makeServer();
        script({notInitialized, initialized, accepted, tools});
        EXPECT_EQ(list(), "a ");
        script({lost, result(R"({"protocolVersion":"2025-06-18"})", {{"mcp-session-id", "s2"}}), accepted,
                tools});
        EXPECT_EQ(list(), "a ");
        EXPECT_EQ(methods(),
                  Methods({"tools/list", "initialize", "notifications/initialized", "tools/list"}));
        EXPECT_EQ(extraHeaders(3).at(0).second, "s2");
        script({lost, initialized, accepted, lost, tools});
        EXPECT_EQ(list(), "Vlastní aplikace vrátila HTTP " + std::to_string(lost.status) + ".");
        EXPECT_EQ(http.requests.size(), 4U);
    }
}

TEST_F(McpServerTest, AMannerThatTheServerRefusesIsForgotten) {
    for (const auto& refused : {reply("", 400), refusal(-32600)}) {
        server = makeServer();
        script({notInitialized, initialized, accepted, tools, refused, tools});
        EXPECT_EQ(list(), "a ");
        EXPECT_EQ(list(), "Vlastní aplikace vrátila HTTP 400.");
        EXPECT_EQ(http.requests.size(), 5U) << "a refused call is not sent again";
        EXPECT_EQ(list(), "a ");
        EXPECT_EQ(http.requests.back().headers, plainHeaders);
    }
}

TEST_F(McpServerTest, AMannerOutlivesAFailureThatIsNotItsOwn) {
    script({notInitialized, initialized, accepted, tools, reply("", 503)});
    EXPECT_EQ(list(), "a ");
    EXPECT_EQ(list(), "Vlastní aplikace vrátila HTTP 503.");
    EXPECT_EQ(list(), "síť neodpovídá");
    script({tools});
    EXPECT_EQ(list(), "a ");
    EXPECT_EQ(extraHeaders(0).at(0).second, "s1");
}

TEST_F(McpServerTest, AServerWithOlderVersionsGetsASession) {
    script({refusal(-32022, R"({"supported":["2025-11-25","2025-06-18"]})"), initialized, accepted, tools});
    EXPECT_EQ(list(), "a ");
    EXPECT_EQ(methods().at(1), "initialize");
}

TEST_F(McpServerTest, AnEndlessCursorEndsTheList) {
    script({notInitialized, initialized, accepted,
            result(R"({"tools":[{"name":"a"}],"nextCursor":")" + std::string(1'025, 'x') + "\"}"), tools});
    EXPECT_EQ(list(), "a ");
    EXPECT_EQ(http.requests.size(), 4U);
}

TEST_F(McpServerTest, AFailingHandshakeNeverTellsTheToken) {
    script({notInitialized, reply(R"({"error":{"message":"bad token secret"}})")});
    EXPECT_EQ(list("secret"), "Neznámá chyba.");
}

TEST_F(McpServerTest, TheWordsOfAServerAreCutAndVisible) {
    script({reply(R"({"error":{"message":"a\u200b\n)" + std::string(100'000, 'x') + "\"}}")});
    EXPECT_EQ(list(), "a " + std::string(498, 'x'));
}

TEST_F(McpServerTest, AnAnswerWithAnErrorIsNoFailureOfTheManner) {
    script({notInitialized, initialized, accepted, reply(R"({"error":{"message":"Limit"}})"), tools});
    EXPECT_EQ(list(), "Limit");
    EXPECT_EQ(list(), "a ");
    EXPECT_EQ(extraHeaders(4).at(0).second, "s1");
}

TEST_F(McpServerTest, TheWordsOfAServerNeverCarryItsToken) {
    script({reply(R"({"error":{"message":"bad token secret"}})"),
            reply(R"({"error":{"message":"bad token"}})")});
    EXPECT_EQ(list("secret"), "Neznámá chyba.");
    EXPECT_EQ(list("secret"), "bad token");
}

TEST_F(McpServerTest, ASessionThatCannotBeginIsAFailure) {
    const std::string invalid = "Vlastní aplikace vrátila neplatnou odpověď.";

    struct Row {
        HttpReply begin;
        std::string told;
    };

    for (const auto& row : {
             Row{reply("", 401), "Vlastní aplikace odmítla přístupový token."},
             Row{result("{}"), invalid},
             Row{result(R"({"protocolVersion":"a\nb"})"), invalid},
             Row{result(R"({"protocolVersion":"1"})", {{"mcp-session-id", "a\xC5\x99"}}), invalid},
             Row{result(R"({"protocolVersion":"1"})", {{"mcp-session-id", std::string(2'000, 'x')}}),
                 invalid},
         }) {
        script({notInitialized, row.begin, accepted, tools});
        EXPECT_EQ(list(), row.told);
        EXPECT_EQ(http.requests.size(), 2U);
    }
}

TEST_F(McpServerTest, AServerOfTheNewestProtocolGetsItsHeadersAndMeta) {
    script({onlyNewest, tools, result("{}")});
    EXPECT_EQ(list(), "a ");
    EXPECT_EQ(call("a"), "{}");
    EXPECT_EQ(extraHeaders(1),
              (Headers{{"MCP-Protocol-Version", "2026-07-28"}, {"Mcp-Method", "tools/list"}}));
    EXPECT_EQ(http.requests[1].body,
              R"({"jsonrpc":"2.0","id":2,"method":"tools/list","params":{)" + meta + "}}");
    EXPECT_EQ(
        extraHeaders(2),
        (Headers{{"MCP-Protocol-Version", "2026-07-28"}, {"Mcp-Method", "tools/call"}, {"Mcp-Name", "a"}}));
    EXPECT_EQ(http.requests[2].body,
              R"({"jsonrpc":"2.0","id":3,"method":"tools/call","params":{"name":"a","arguments":{"x":1},)" +
                  meta + "}}");
}

TEST_F(McpServerTest, ANameThatNoHeaderHoldsIsEncoded) {
    script({onlyNewest, tools});
    list();

    struct Row {
        const char* name;
        const char* header;
    };

    for (const auto& row :
         {Row{"a b", "a b"}, Row{"čas", "=?base64?xI1hcw==?="}, Row{" a", "=?base64?IGE=?="},
          Row{"a\nB: c", "=?base64?YQpCOiBj?="}, Row{"=?base64?", "=?base64?PT9iYXNlNjQ/?="}}) {
        script({result("{}")});
        call(row.name);
        EXPECT_EQ(extraHeaders(0).back().second, row.header);
    }
}

TEST_F(McpServerTest, FurtherPagesAreReadInAVersionedManner) {
    script({notInitialized, initialized, accepted, result(R"({"tools":[{"name":"a"}],"nextCursor":"2"})"),
            result(R"({"tools":[{"name":"b"},7]})")});
    EXPECT_EQ(list(), "a b - ");
    EXPECT_EQ(parseJson(http.requests.back().body).value().at("params"),
              boost::json::value({{"cursor", "2"}}));
}

TEST_F(McpServerTest, PagesWithoutEndAreBounded) {
    script({notInitialized, initialized, accepted});
    for (int page = 0; page < 100; ++page)
        http.replies.push_back(result(R"({"tools":[],"nextCursor":")" + std::to_string(page) + "\"}"));
    EXPECT_EQ(list(), "");
    EXPECT_EQ(http.requests.size(), 3U + McpServer::mostPages);
}

TEST_F(McpServerTest, TheDeadlineBoundsEverythingTogether) {
    script({tools});
    const auto near = executor.run(server->listTools({"", clock.sinceBoot() + 7s}));
    EXPECT_TRUE(*near);
    EXPECT_EQ(http.requests[0].timeLimit, 7s);
    const auto past = executor.run(server->listTools({"", clock.sinceBoot()}));
    EXPECT_EQ(past->error().popis(), popis(SystemTrouble::timedOut));
    EXPECT_EQ(http.requests.size(), 1U);
}

} // namespace
} // namespace morvex
