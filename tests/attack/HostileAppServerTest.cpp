#include "app/customapps/CustomTools.h"
#include "app/customapps/McpServer.h"
#include "foundation/ThreadExecutor.h"
#include "platform/memory/ManualClock.h"
#include "platform/net/CurlHttpClient.h"
#include "tests/attack/TlsFaults.h"
#include "tests/support/Await.h"
#include "tests/support/Effort.h"
#include "tests/support/TestServer.h"

#include <boost/asio/buffer.hpp>
#include <boost/asio/read_until.hpp>
#include <boost/asio/write.hpp>
#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <functional>
#include <string>
#include <vector>
#include <zlib.h>

namespace morvex {
namespace {

namespace asio = boost::asio;
using namespace std::chrono_literals;

const std::string invalid = "Vlastní aplikace vrátila neplatnou odpověď.";
const std::string tooLong = "Odpověď serveru je příliš dlouhá.";
const std::string cut = "Spojení se přerušilo.";
const std::string late = "Server se neozval včas.";

/// What a hostile server sends behind a request.
using Attack = std::function<void(TestServer::Socket&)>;

void write(TestServer::Socket& socket, const std::string& bytes) {
    asio::write(socket, asio::buffer(bytes));
}

Attack saying(std::string bytes) {
    return [bytes = std::move(bytes)](TestServer::Socket& socket) { write(socket, bytes); };
}

std::string head(const std::string& more, const std::string& status = "200 OK") {
    return "HTTP/1.1 " + status + "\r\nConnection: close\r\n" + more + "\r\n";
}

Attack answering(const std::string& body, const std::string& type = "application/json",
                 const std::string& status = "200 OK") {
    return saying(
        head("Content-Type: " + type + "\r\nContent-Length: " + std::to_string(body.size()) + "\r\n",
             status) +
        body);
}

Attack naming(const std::string& tools) {
    return answering(R"({"result":{"tools":[)" + tools + "]}}");
}

/// The same part again and again, without end.
Attack endless(std::string start, std::string part) {
    return [start = std::move(start), part = std::move(part)](TestServer::Socket& socket) {
        write(socket, start);
        for (;;) write(socket, part);
    };
}

std::string repeated(const std::string& part, int times, const std::string& between = ",") {
    std::string all;
    for (int time = 0; time < times; ++time) all += (time == 0 ? "" : between) + part;
    return all;
}

std::string numbered(const std::string& before, const std::string& after, int count) {
    std::string all;
    for (int number = 0; number < count; ++number)
        all += (number == 0 ? "" : ",") + before + std::to_string(number) + after;
    return all;
}

std::string nested(int depth) {
    return repeated(R"({"a":)", depth, "") + "1" + repeated("}", depth, "");
}

/// Many bytes in few (RFC 1952).
std::string bomb() {
    const std::string zeros(std::size_t{64} * 1024 * 1024, ' ');
    std::string packed(compressBound(zeros.size()), '\0');
    z_stream stream{};
    deflateInit2(&stream, Z_BEST_COMPRESSION, Z_DEFLATED, 15 + 16, 8, Z_DEFAULT_STRATEGY);
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(zeros.data()));
    stream.avail_in = static_cast<uInt>(zeros.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    deflate(&stream, Z_FINISH);
    packed.resize(stream.total_out);
    deflateEnd(&stream);
    return packed;
}

/// An object whose names a hash table may have to compare with each other.
std::string manyNames(int count) {
    return "{" + numbered(R"("name)", R"(":1)", count) + "}";
}

struct Row {
    const char* attack;
    Attack server;
    std::string told; ///< the names of the tools, or the words of the failure
};

class HostileAppServerTest : public testing::Test {
  protected:
    std::string listed(const std::string& url) {
        McpServer server({http, workers, clock, sequence}, url);
        const auto list = await(executor, server.listTools({"secret", clock.sinceBoot() + 2s}));
        if (!list) return list.error().popis().czech();
        const StoredApp app{"app", "App", url, true, StoredApp::fromMac};
        std::string names;
        std::size_t count = 0;
        for (const auto& tool : customTools(app, *list, [](const std::string&) { return false; }))
            if (++count <= 3) names += tool.descriptor.name + " ";
        return count > 3 ? std::to_string(count) + " tools" : names;
    }

    void expectHarmless(const Row& row) {
        TestServer server([&row](TestServer::Socket& socket) {
            std::string request;
            asio::read_until(socket, asio::dynamic_buffer(request), "}}");
            row.server(socket);
        });
        EXPECT_EQ(listed("http://" + server.authority() + "/api/mcp"), row.told) << row.attack;
    }

    ThreadExecutor executor{"test"};
    ThreadExecutor workers{"workers"};
    ManualClock clock;
    CurlHttpClient http;
    std::int64_t sequence = 0;
};

TEST_F(HostileAppServerTest, NothingThatAServerSendsDoesMoreThanFail) {
    const std::string stream = "text/event-stream";
    const std::vector<Row> rows{
        {"nothing at all", saying(""), cut},
        {"no HTTP", saying("220 mail.example ESMTP\r\n"), invalid},
        {"half a head", saying("HTTP/1.1 200 OK\r\nConte"), invalid},
        {"a head without end", endless("HTTP/1.1 200 OK\r\n", "X: " + std::string(1000, 'x') + "\r\n"),
         tooLong},
        {"a body without end", endless(head("Content-Type: application/json\r\n"), std::string(65536, ' ')),
         tooLong},
        {"an event stream without end",
         endless(head("Content-Type: " + stream + "\r\n"), repeated("data: {}\n\n", 6'000, "")), tooLong},
        {"50 MB", endless(head("Content-Length: 52428800\r\n"), std::string(65536, 'x')), tooLong},
        {"less than was promised", saying(head("Content-Length: 100\r\n") + "{}"), cut},
        {"a negative length", saying(head("Content-Length: -1\r\n") + "{}"), invalid},
        {"broken chunks", saying(head("Transfer-Encoding: chunked\r\n") + "zz\r\n{}\r\n0\r\n\r\n"), cut},
        {"silence", [](TestServer::Socket& socket) { readToTheEnd(socket); }, late},
        {"a drip",
         [](TestServer::Socket& socket) {
             write(socket, head("Content-Type: application/json\r\n"));
             for (;;) {
                 write(socket, " ");
                 std::this_thread::sleep_for(50ms);
             }
         },
         late},
        {"a packed bomb",
         saying(head("Content-Encoding: gzip\r\nContent-Type: application/json\r\n") + bomb()), invalid},
        {"a reset", [](TestServer::Socket& socket) { resetConnection(socket); }, cut},
        {"100 continue for ever", endless("", "HTTP/1.1 100 Continue\r\n\r\n"), tooLong},
        {"no JSON", answering("tools"), invalid},
        {"bytes that are no text", answering("{\"result\":{\"tools\":[{\"name\":\"\xFF\xFE\"}]}}"), invalid},
        {"a zero byte", answering(std::string("{\"result\":{}}\0", 14)), invalid},
        {"JSON behind JSON", answering("{\"result\":{}}{}"), invalid},
        {"65 levels", answering(R"({"result":)" + nested(65) + "}"), invalid},
        {"60 levels of a schema", naming(R"({"name":"deep","inputSchema":)" + nested(58) + "}"),
         "mac.custom.app.deep "},
        {"a million levels", answering(R"({"result":)" + std::string(1'000'000, '[')), invalid},
        {"200,000 names", naming(R"({"name":"t"},)" + manyNames(200'000)), invalid},
        {"2,000 names in a schema", naming(R"({"name":"t","inputSchema":)" + manyNames(2'000) + "}"),
         "mac.custom.app.t "},
        {"one key again and again",
         answering(R"({"result":{"tools":[{"name":"t"}]},)" + repeated(R"("a":1)", 300'000) + "}"), invalid},
        {"100,000 tools", naming(numbered(R"({"name":"t)", "\"}", 100'000)), "256 tools"},
        {"300,000 tools", naming(numbered(R"({"name":"t)", "\"}", 300'000)), tooLong},
        {"300,000 numbers", naming(R"({"name":"t"},)" + repeated("1", 300'000)), invalid},
        {"10,000 tools", naming(numbered(R"({"name":"t)", "\"}", 10'000)), "256 tools"},
        {"one name 1,000 times", naming(repeated(R"({"name":"t"})", 1'000)), "256 tools"},
        {"a name that is a path", naming(R"({"name":"../../etc/passwd"})"),
         "mac.custom.app.______etc_passwd "},
        {"a name that is another tool", naming(R"({"name":"mac.files.read"})"),
         "mac.custom.app.mac_files_read "},
        {"a name of marks", naming(R"({"name":"a)" + repeated("\u0301", 120, "") + "\"}"),
         "mac.custom.app.a" + repeated("\u0301", 120, "") + " "},
        {"a name that is too long", naming(R"({"name":")" + std::string(100'000, 'x') + "\"}"), ""},
        {"a large schema",
         naming(R"({"name":"t","inputSchema":{"a":")" + std::string(3'000'000, 'x') + "\"}}"), ""},
        {"a large description",
         naming(R"({"name":"t","description":")" + std::string(3'000'000, 'x') + "\"}"), ""},
        {"tools that are none", naming(R"(1,null,[],{"name":null},{"name":{}},"x",{})"), ""},
        {"tools as an object", answering(R"({"result":{"tools":{"name":"t"}}})"), ""},
        {"a result that is a list", answering(R"({"result":[]})"), invalid},
        {"an error of 3 MB",
         answering(R"({"error":{"message":")" + std::string(100, 'x') + R"(","data":")" +
                   std::string(3'000'000, 'y') + "\"}}"),
         std::string(100, 'x')},
        {"a stream of a million lines", answering(repeated("data:", 500'000, "\n"), stream), invalid},
        {"a refusal of 3 MB",
         answering(R"({"error":{"code":-32000}})" + std::string(3'000'000, ' '), "application/json",
                   "400 Bad Request"),
         "Vlastní aplikace vrátila HTTP 400."},
        {"a refusal without end of the game",
         answering(R"({"error":{"code":-32000}})", "application/json", "400 Bad Request"),
         "Vlastní aplikace vrátila HTTP 400."},
        {"the newest protocol and then not",
         answering(R"({"error":{"code":-32022,"data":{"supported":["2026-07-28"]}}})", "application/json",
                   "400 Bad Request"),
         "Vlastní aplikace vrátila HTTP 400."},
    };
    for (const auto& row : rows) expectHarmless(row);
    tell("hostile servers of custom apps", rows.size(), "all only failed");
}

TEST_F(HostileAppServerTest, ARedirectIsNotFollowedAndTakesNoTokenAway) {
    TestServer other([](TestServer::Socket& socket) { readToTheEnd(socket); });
    for (const auto* status :
         {"301 Moved", "302 Found", "303 See Other", "307 Temporary Redirect", "308 Permanent Redirect"})
        expectHarmless(
            {status,
             saying(head("Location: http://" + other.authority() + "/\r\nContent-Length: 0\r\n", status)),
             "Vlastní aplikace vrátila HTTP " + std::string(status).substr(0, 3) + "."});
    EXPECT_EQ(other.connections(), 0);
}

TEST_F(HostileAppServerTest, PagesWithoutEndAreBoundedInTime) {
    // A session whose every page names another one.
    int requests = 0;
    TestServer server([&requests](TestServer::Socket& socket) {
        std::string request;
        asio::read_until(socket, asio::dynamic_buffer(request), "}");
        const bool isFirst = requests++ == 0;
        const bool begins = request.contains("initialize");
        if (isFirst)
            return answering(R"({"error":{"code":-32000}})", "application/json", "400 Bad Request")(socket);
        if (begins) return answering(R"({"result":{"protocolVersion":"2025-06-18"}})")(socket);
        answering(R"({"result":{"tools":[],"nextCursor":")" + std::to_string(requests) + "\"}}")(socket);
    });
    EXPECT_EQ(listed("http://" + server.authority() + "/api/mcp"), "");
    EXPECT_LE(requests, McpServer::mostPages + 4);
}

TEST_F(HostileAppServerTest, AServerThatIsNotTheOneNamedIsToldNothing) {
    TestAuthority authority;
    std::atomic<std::size_t> told = 0;
    CurlHttpClient client(authority.certificate());
    for (const auto& fault : tlsFaults(authority, told)) {
        TestServer server(fault.play);
        McpServer asked({client, workers, clock, sequence}, "https://" + server.authority() + "/api/mcp");
        const auto list = await(executor, asked.listTools({"secret", clock.sinceBoot() + 2s}));
        ASSERT_FALSE(list) << fault.what;
        EXPECT_EQ(list.error().popis().czech().contains("secret"), false) << fault.what;
    }
    EXPECT_EQ(told, 0U);
}

} // namespace
} // namespace morvex
