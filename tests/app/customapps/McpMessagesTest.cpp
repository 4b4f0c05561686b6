#include "app/customapps/McpMessages.h"

#include "shared/wire/Json.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace morvex {
namespace {

HttpReply json(const std::string& body, int status = 200) {
    return {status, body, {{"content-type", "application/json"}}};
}

HttpReply stream(const std::string& body, const std::string& type = "text/event-stream") {
    return {200, body, {{"Content-Type", type}}};
}

/// The result, or the words of the failure.
std::string told(const HttpReply& reply) {
    const auto result = mcpResult(reply);
    return result ? encode(*result) : result.error().popis().czech();
}

const std::string invalid = "Vlastní aplikace vrátila neplatnou odpověď.";

TEST(McpMessages, ARequestHasItsKeysInTheirOrder) {
    EXPECT_EQ(mcpRequest(7, {"tools/list", {}}),
              R"({"jsonrpc":"2.0","id":7,"method":"tools/list","params":{}})");
    EXPECT_EQ(mcpRequest(8, {"tools/call", {{"name", "a b"}, {"arguments", {{"x", 18446744073709551615U}}}}}),
              R"({"jsonrpc":"2.0","id":8,"method":"tools/call",)"
              R"("params":{"name":"a b","arguments":{"x":18446744073709551615}}})");
    EXPECT_EQ(mcpNotification("notifications/initialized"),
              R"({"jsonrpc":"2.0","method":"notifications/initialized"})");
}

TEST(McpMessages, TheStatusIsJudgedBeforeTheBody) {
    const std::string body = R"({"result":{}})";
    EXPECT_EQ(told(json(body)), "{}");
    EXPECT_EQ(told(json(body, 299)), "{}");
    EXPECT_EQ(told(json(body, 0)), invalid) << "not HTTP";
    for (const int status : {401, 403})
        EXPECT_EQ(told(json(body, status)), "Vlastní aplikace odmítla přístupový token.");
    for (const int status : {100, 199, 300, 307, 400, 404, 500, 503})
        EXPECT_EQ(told(json(body, status)), "Vlastní aplikace vrátila HTTP " + std::to_string(status) + ".");
}

TEST(McpMessages, OnlyAResultThatIsAnObjectIsOne) {
    for (const char* body : {"", "{", "[]", "1", "null", R"("x")", "{}", R"({"result":1})",
                             R"({"result":[]})", R"({"result":null})", "\xFF", R"({"error":null})"})
        EXPECT_EQ(told(json(body)), invalid) << body;
    EXPECT_EQ(told(json(R"({"id":"other","result":{"a":[1,-9223372036854775808,0.5]}})")),
              R"({"a":[1,-9223372036854775808,0.5]})");
}

TEST(McpMessages, AnErrorThatIsAnObjectWinsOverAResult) {
    EXPECT_EQ(told(json(R"({"error":{"message":"Limit"},"result":{}})")), "Limit");
    EXPECT_EQ(told(json(R"({"error":{"message":7}})")), "Neznámá chyba.");
    EXPECT_EQ(told(json(R"({"error":{}})")), "Neznámá chyba.");
    EXPECT_EQ(told(json(R"({"error":"no","result":{"a":1}})")), R"({"a":1})");
}

TEST(McpMessages, NestingIsBounded) {
    const auto nested = [](int depth) {
        return R"({"result":{"a":)" + std::string(static_cast<std::size_t>(depth), '[') +
               std::string(static_cast<std::size_t>(depth), ']') + "}}";
    };
    EXPECT_NE(told(json(nested(62))), invalid);
    EXPECT_EQ(told(json(nested(63))), invalid);
}

TEST(McpMessages, OfAnEventStreamTheLastLineOfDataCounts) {
    struct Row {
        const char* body;
        const char* document;
    };

    for (const auto& row : {
             Row{"data: {\"a\":1}\n\ndata: {\"a\":2}\n\nevent: message\ndata: \t{\"a\":3} \t\n\n",
                 "{\"a\":3}"},
             Row{"data:{}", "{}"},
             Row{"data: {}\r\n\r\n", "{}\r"},
             Row{"data: 1\ndata:\n", ""},
             Row{"data: 1\n data: 2\nDATA: 3\ndatax: 4\n", "1"},
             Row{"event: message\n\n", "event: message\n\n"},
             Row{"", ""},
             Row{"data: {}\n\xFF", "data: {}\n\xFF"},
         })
        EXPECT_EQ(mcpDocument(stream(row.body)), row.document) << row.body;
}

TEST(McpMessages, OnlyAnEventStreamIsReduced) {
    const std::string body = "data: {}\n";
    for (const char* type : {"text/event-stream", "TEXT/Event-Stream; charset=utf-8", "x, text/event-stream"})
        EXPECT_EQ(mcpDocument(stream(body, type)), "{}") << type;
    for (const char* type : {"application/json", "text/event", ""})
        EXPECT_EQ(mcpDocument(stream(body, type)), body);
    EXPECT_EQ(mcpDocument({200, body, {}}), body);
}

TEST(McpMessages, ALineOfDataWithACarriageReturnIsStillJson) {
    EXPECT_EQ(told(stream("data: {\"result\":{}}\r\n\r\n")), "{}");
}

TEST(McpMessages, ARefusalIsAJsonRpcErrorWithANumber) {
    const auto refusal = mcpRefusal(json(
        R"({"jsonrpc":"2.0","error":{"code":-32022,"data":{"supported":["2026-07-28",1]}},"id":1})", 400));
    ASSERT_TRUE(refusal);
    EXPECT_EQ(refusal->code, -32022);
    EXPECT_EQ(refusal->supported, std::vector<std::string>{"2026-07-28"});
    EXPECT_TRUE(mcpRefusal(stream("data: {\"error\":{\"code\":-32000}}")));
    for (const char* body :
         {"", "Bad Request", R"({"error":"no"})", R"({"error":{"code":"x"}})", R"({"result":{}})"})
        EXPECT_FALSE(mcpRefusal(json(body, 400))) << body;
    EXPECT_FALSE(mcpRefusal(json(R"({"error":{"code":1}})" + std::string(64 * 1024, ' '), 400)));
}

} // namespace
} // namespace morvex
