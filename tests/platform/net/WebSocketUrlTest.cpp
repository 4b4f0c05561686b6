#include "platform/net/WebSocketUrl.h"

#include "platform/ports/NetworkError.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

namespace morvex {

void PrintTo(const WebSocketUrl& url, std::ostream* out) {
    *out << url.host << " " << url.port << " " << url.authority << " " << url.target;
}

namespace {

using enum WebSocketUrl::Security;

TEST(WebSocketUrl, ReadsItsParts) {
    struct Row {
        const char* text;
        WebSocketUrl parts;
    };

    const std::vector<Row> rows{
        {"ws://relay.example", {plain, "relay.example", "80", "relay.example", "/"}},
        {"wss://relay.example/", {tls, "relay.example", "443", "relay.example", "/"}},
        {"WSS://relay.example/v1/ws?v=1.4", {tls, "relay.example", "443", "relay.example", "/v1/ws?v=1.4"}},
        {"ws://127.0.0.1:8787/v1/ws", {plain, "127.0.0.1", "8787", "127.0.0.1:8787", "/v1/ws"}},
        {"ws://relay.example:80/", {plain, "relay.example", "80", "relay.example", "/"}},
        {"wss://relay.example:80/", {tls, "relay.example", "80", "relay.example:80", "/"}},
        {"ws://[::1]", {plain, "::1", "80", "[::1]", "/"}},
        {"ws://[2001:db8::7]:65535/a", {plain, "2001:db8::7", "65535", "[2001:db8::7]:65535", "/a"}},
        {"ws://relay.example?v=1", {plain, "relay.example", "80", "relay.example", "/?v=1"}},
        {"ws://relay.example/%20?a=b/c?d", {plain, "relay.example", "80", "relay.example", "/%20?a=b/c?d"}},
    };
    for (const auto& row : rows) {
        auto url = WebSocketUrl::parse(row.text);
        ASSERT_TRUE(url) << row.text;
        EXPECT_EQ(*url, row.parts) << row.text;
    }
}

TEST(WebSocketUrl, RefusesWhatIsNoPlainWebSocketAddress) {
    const std::vector<std::string> texts{
        "",
        "ws:",
        "ws://",
        "relay.example",
        "//relay.example",
        "http://relay.example",
        "https://relay.example",
        " ws://relay.example",
        "ws://relay.example ",
        "ws:///path",
        "ws://:80/",
        "ws://user@relay.example/",
        "ws://user:password@relay.example/",
        "ws://relay.example:/",
        "ws://relay.example:0/",
        "ws://relay.example:65536/",
        "ws://relay.example:-1/",
        "ws://relay.example:80x/",
        "ws://relay.example:80:81/",
        "ws://relay.example/#fragment",
        "ws://relay.example#fragment",
        "ws://relay.example/a b",
        "ws://relay.example/a\r\nX-Header: b",
        "ws://relay.example\r\n/",
        "ws://relay.example/a\tb",
        std::string("ws://relay.example/a\0b", 22),
        std::string("ws://relay\0.example/", 20),
        "ws://relay.example/\x7f",
        "ws://relay.example\\@other.example/",
        "ws://p%72eklad.example/",
        "ws://p\u0159eklad.example/",
        "ws://relay.example/\u0159",
        "ws://::1/",
        "ws://[::1",
        "ws://[::1]x",
        "ws://[]/",
        "ws://[relay.example]/",
        "ws://[127.0.0.1]/",
        "ws://[fe80::1%25eth0]/",
        std::string("ws://[::1\0x]/", 13),
    };
    for (const auto& text : texts) {
        auto url = WebSocketUrl::parse(text);
        ASSERT_FALSE(url) << text;
        EXPECT_NE(url.error().as<NetworkError>(), nullptr) << text;
    }
}

} // namespace
} // namespace morvex
