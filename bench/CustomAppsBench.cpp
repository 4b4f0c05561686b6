#include "app/customapps/CustomToolCatalogue.h"
#include "bench/Measure.h"
#include "foundation/ThreadExecutor.h"
#include "platform/memory/MemoryVault.h"
#include "platform/net/CurlHttpClient.h"
#include "shared/base/Require.h"
#include "tests/support/Await.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TestAuthority.h"

#include MORVEX_BASICS

#include <boost/asio/buffer.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/ssl/context.hpp>
#include <boost/asio/ssl/stream.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http/read.hpp>
#include <boost/beast/http/string_body.hpp>
#include <boost/beast/http/write.hpp>

#include <chrono>
#include <cstdio>
#include <string>
#include <thread>
#include <vector>

// Measures asking custom apps for their tools, and a call of one of these tools, over TLS with a connection
// that is kept alive; the baseline are the same POSTs by the HTTP client alone.

namespace morvex {
namespace {

namespace asio = boost::asio;
namespace http = boost::beast::http;
using namespace std::chrono_literals;

constexpr int apps = 20;
constexpr auto thinking = 5ms;

/// A server over TLS that answers every request of every connection, a list only after a while.
class AppServer {
  public:
    explicit AppServer(const TestAuthority::Identity& identity) {
        tls_.use_certificate_chain(asio::buffer(identity.certificate));
        tls_.use_private_key(asio::buffer(identity.key), asio::ssl::context::pem);
        std::thread([this] { accept(); }).detach();
    }

    [[nodiscard]] std::string url() const {
        return "https://127.0.0.1:" + std::to_string(acceptor_.local_endpoint().port()) + "/api/mcp";
    }

    std::string tools = R"({"name":"echo","description":"Says it again"})";

  private:
    void accept() {
        for (;;) {
            auto socket = acceptor_.accept();
            std::thread([this, socket = std::move(socket)]() mutable { serve(std::move(socket)); }).detach();
        }
    }

    void serve(asio::ip::tcp::socket socket) {
        socket.set_option(asio::ip::tcp::no_delay(true));
        asio::ssl::stream<asio::ip::tcp::socket> stream(std::move(socket), tls_);
        boost::system::error_code error;
        stream.handshake(asio::ssl::stream_base::server, error);
        boost::beast::flat_buffer buffer;
        while (!error) {
            http::request<http::string_body> request;
            http::read(stream, buffer, request, error);
            if (error) return;
            const bool lists = request.body().contains("tools/list");
            if (lists) std::this_thread::sleep_for(thinking);
            http::response<http::string_body> response{http::status::ok, 11};
            response.set(http::field::content_type, "application/json");
            response.body() = lists ? R"({"jsonrpc":"2.0","id":1,"result":{"tools":[)" + tools + "]}}"
                                    : R"({"jsonrpc":"2.0","id":1,"result":{"content":[{"text":"hi"}]}})";
            response.prepare_payload();
            http::write(stream, response, error);
        }
    }

    asio::ssl::context tls_{asio::ssl::context::tls_server};
    asio::io_context context_;
    asio::ip::tcp::acceptor acceptor_{context_, {asio::ip::address_v4::loopback(), 0}};
};

/// Part of this program as long as it runs: its threads are not ended.
struct Bench {
    TestAuthority authority;
    AppServer server{authority.issue("IP:127.0.0.1")};
    ThreadExecutor main{"main"};
    ThreadExecutor storage{"storage"};
    ThreadExecutor workers{"workers"};
    std::unique_ptr<Clock> clock = SystemClock::create().value();
    CurlHttpClient client{authority.certificate()};
    MemoryVault vault;
    Keychain keychain{vault, storage};
    TemporaryFolder folder;
    SeenTools seen{folder.path(), {main, storage, *clock}};
    Turns tokens;
    CustomToolCatalogue catalogue{{client, keychain, tokens, workers, *clock, seen, {}}, [] { return true; }};

    [[nodiscard]] std::vector<StoredApp> list() const {
        std::vector<StoredApp> all;
        for (int number = 0; number < apps; ++number)
            all.push_back({"app" + std::to_string(number), "App", server.url(), true, StoredApp::fromMac});
        return all;
    }

    void refresh() { await(main, refreshAll()); }

    Task<bool> refreshAll() {
        co_await catalogue.refresh(list());
        co_return true;
    }

    void post(const std::string& body) {
        HttpRequest request{.method = "POST", .url = server.url(), .body = body};
        request.headers = {{"Content-Type", "application/json"},
                           {"Accept", "application/json, text/event-stream"}};
        require(await(main, client.send(std::move(request))).has_value(), "a request failed");
    }

    void call() {
        const auto answer = await(main, catalogue.callTool("mac.custom.app0.echo", {{"text", "hi"}}, {}));
        require(answer.at("ok").as_bool(), "a call failed");
    }
};

void bench() {
    Bench bench;
    const std::string listBody = R"({"jsonrpc":"2.0","id":1,"method":"tools/list","params":{}})";
    const std::string callBody = R"({"jsonrpc":"2.0","id":1,"method":"tools/call",)"
                                 R"("params":{"name":"echo","arguments":{"text":"hi"}}})";
    const auto asked = costs(15, {[&] { bench.refresh(); },
                                  [&] {
                                      for (int number = 0; number < apps; ++number) bench.post(listBody);
                                  }});
    std::printf("asking %d apps that take 5 ms each: %.1f ms, the same requests alone %.1f ms (%.2f times); "
                "processor %.1f and %.1f ms (%.2f times)\n",
                apps, asked[0].wall, asked[1].wall, asked[0].wall / asked[1].wall, asked[0].processor,
                asked[1].processor, asked[0].processor / asked[1].processor);
    const auto called = costs(2'000, {[&] { bench.call(); }, [&] { bench.post(callBody); }});
    std::printf(
        "a call of a custom tool: %.0f µs, the same request alone %.0f µs (%.2f times); processor %.0f "
        "and %.0f µs (%.2f times)\n",
        called[0].wall * 1e3, called[1].wall * 1e3, called[0].wall / called[1].wall,
        called[0].processor * 1e3, called[1].processor * 1e3, called[0].processor / called[1].processor);
    const auto before = residentMebibytes();
    std::string many;
    for (int number = 0; number < 100; ++number)
        many +=
            (number == 0 ? "" : ",") +
            (R"({"name":"tool)" + std::to_string(number) + R"(","description":")" + std::string(400, 'x') +
             R"(","inputSchema":{"type":"object","x":")" + std::string(1'000, 'y') + "\"}}");
    bench.server.tools = many;
    bench.refresh();
    std::printf("memory with %zu tools of 1.4 kB: %.1f MiB, %.1f MiB before\n",
                bench.catalogue.tools().size(), residentMebibytes(), before);
    std::fflush(stdout);
    std::_Exit(0);
}

} // namespace
} // namespace morvex

int main() {
    morvex::bench();
}
