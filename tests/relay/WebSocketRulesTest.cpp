#include "tests/relay/RunningRelay.h"
#include "tests/support/Effort.h"
#include "tests/support/RawFrames.h"
#include "tests/support/RelayClient.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace morvex;

namespace {

constexpr std::string_view goodKey = "Sec-WebSocket-Key: dGhlIHNhbXBsZSBub25jZQ==\r\n";
constexpr std::string_view goodVersion = "Sec-WebSocket-Version: 13\r\n";
constexpr std::string_view goodUpgrade = "Connection: Upgrade\r\nUpgrade: websocket\r\n";

std::string upgrade(std::string_view headers, std::string_view start = "GET /v1/ws?v=1.4 HTTP/1.1") {
    return std::string{start} + "\r\nHost: localhost\r\n" + std::string{headers} + "\r\n";
}

std::string with(std::initializer_list<std::string_view> lines) {
    std::string headers;
    for (const auto line : lines) headers += line;
    return upgrade(headers);
}

const std::string goodRequest = with({goodUpgrade, goodKey, goodVersion});

unsigned statusOf(std::string_view answer) {
    return answer.size() < 12 ? 0U : static_cast<unsigned>(std::stoul(std::string{answer.substr(9, 3)}));
}

/// One WebSocket of raw bytes. An answer goes out as soon as the relay has agreed.
std::string heardAfter(const RunningRelay& relay, std::string_view frames) {
    RawSocket socket{relay.port()};
    socket.write(goodRequest);
    EXPECT_EQ(statusOf(socket.readHead()), 101U);
    socket.write(frames);
    return socket.readToTheEnd();
}

} // namespace

TEST(WebSocketRules, AnswersOnlyARightRequestForASocket) {
    RunningRelay relay;
    const auto key = [](std::string_view value) {
        return "Sec-WebSocket-Key: " + std::string{value} + "\r\n";
    };

    struct Row {
        const char* what;
        std::string request;
        unsigned status;
    };

    const std::vector<Row> rows{
        {"no key", with({goodUpgrade, goodVersion}), 400},
        {"an empty key", with({goodUpgrade, goodVersion, key("")}), 400},
        {"two keys", with({goodUpgrade, goodVersion, goodKey, goodKey}), 400},
        {"two other keys", with({goodUpgrade, goodVersion, goodKey, key("AAAAAAAAAAAAAAAAAAAAAA==")}), 400},
        {"a key of 15 bytes", with({goodUpgrade, goodVersion, key("dGhlIHNhbXBsZSBub25j")}), 400},
        {"a key of 17 bytes", with({goodUpgrade, goodVersion, key("dGhlIHNhbXBsZSBub25jZSE=")}), 400},
        {"a key of 1 byte", with({goodUpgrade, goodVersion, key("AA==")}), 400},
        {"a key that is no base64", with({goodUpgrade, goodVersion, key("dGhlIHNhbXBsZSBub25jZ!==")}), 400},
        {"a key without padding", with({goodUpgrade, goodVersion, key("dGhlIHNhbXBsZSBub25jZQ")}), 400},
        {"a key of two in a list", with({goodUpgrade, goodVersion, key("dGhlIHNhbXBsZSBub25jZQ==, AA==")}),
         400},
        {"no version", with({goodUpgrade, goodKey}), 400},
        {"two versions", with({goodUpgrade, goodKey, goodVersion, goodVersion}), 400},
        {"version 8", with({goodUpgrade, goodKey, "Sec-WebSocket-Version: 8\r\n"}), 426},
        {"version 13, 8", with({goodUpgrade, goodKey, "Sec-WebSocket-Version: 13, 8\r\n"}), 426},
        {"version 013", with({goodUpgrade, goodKey, "Sec-WebSocket-Version: 013\r\n"}), 426},
        {"no connection", with({"Upgrade: websocket\r\n", goodKey, goodVersion}), 426},
        {"no upgrade", with({"Connection: Upgrade\r\n", goodKey, goodVersion}), 426},
        {"another upgrade", with({"Connection: Upgrade\r\nUpgrade: h2c\r\n", goodKey, goodVersion}), 426},
        {"POST",
         upgrade(std::string{goodUpgrade} + std::string{goodKey} + std::string{goodVersion},
                 "POST /v1/ws?v=1.4 HTTP/1.1"),
         426},
        {"HTTP/1.0",
         upgrade(std::string{goodUpgrade} + std::string{goodKey} + std::string{goodVersion},
                 "GET /v1/ws?v=1.4 HTTP/1.0"),
         426},
        {"content", with({goodUpgrade, goodKey, goodVersion, "Content-Length: 1\r\n"}) + "x", 400},
        {"a frame before the answer", goodRequest + test::masked(test::bytes("\x89\x00")), 400},
    };
    for (const auto& row : rows)
        EXPECT_EQ(statusOf(exchange(relay.port(), row.request)), row.status) << row.what;
    tell("wrong openings of a WebSocket at the relay", rows.size(), "all refused");
}

TEST(WebSocketRules, AgreesToWhatItIsAskedInEveryRightForm) {
    RunningRelay relay;
    for (const auto& request : {
             goodRequest,
             with({"Connection: keep-alive, uPgRaDe\r\nUpgrade: h2c, WebSocket\r\n", goodKey, goodVersion}),
             with({goodUpgrade, goodKey, goodVersion, "Sec-WebSocket-Protocol: chat\r\n"}),
             with({goodUpgrade, goodKey, goodVersion, "Sec-WebSocket-Extensions: permessage-deflate\r\n"}),
             upgrade(std::string{goodUpgrade} + std::string{goodKey} + std::string{goodVersion},
                     "GET http://localhost/v1/ws?v=1.4 HTTP/1.1"),
         }) {
        RawSocket socket{relay.port()};
        socket.write(request);
        const auto head = socket.readHead();
        EXPECT_THAT(head, testing::StartsWith("HTTP/1.1 101 ")) << request;
        EXPECT_THAT(head, testing::HasSubstr("Sec-WebSocket-Accept: s3pPLMBiTxaQ9kYGzzhZRbK+xOo=\r\n"));
        EXPECT_THAT(head, testing::HasSubstr("Server: morvex-relay\r\n"));
        for (const char* name : {"Sec-WebSocket-Protocol", "Sec-WebSocket-Extensions", "Beast", "Boost"})
            EXPECT_THAT(head, testing::Not(testing::HasSubstr(name))) << request;
    }
}

TEST(WebSocketRules, NamesItsVersionsToOthers) {
    RunningRelay relay;
    const auto answer = exchange(relay.port(), with({goodUpgrade, goodKey, "Sec-WebSocket-Version: 12\r\n"}));
    EXPECT_THAT(answer, testing::HasSubstr("Sec-WebSocket-Version: 13\r\n"));
    EXPECT_THAT(answer, testing::HasSubstr("Connection: close, upgrade\r\n"));
    EXPECT_THAT(answer, testing::HasSubstr("Upgrade: websocket\r\n"));
}

TEST(WebSocketRules, EndsASocketOverAWrongFrame) {
    RunningRelay relay;
    for (const auto& row : test::wrongFrames()) {
        const auto before = row.before.empty() ? "" : test::masked(row.before);
        const auto heard = heardAfter(relay, before + test::masked(row.frame));
        EXPECT_EQ(test::lastCloseCode(heard), row.answer) << row.what;
    }
    tell("wrong frames at the relay", test::wrongFrames().size(), "all end with their close code");
}

TEST(WebSocketRules, EndsASocketOverAWrongLength) {
    RunningRelay relay;
    for (const auto& row : test::wrongLengths()) {
        auto head = row.frame;
        head[1] = static_cast<char>(head[1] | 0x80);
        EXPECT_EQ(test::lastCloseCode(heardAfter(relay, head + "mask")), row.answer) << row.what;
    }
    tell("wrong lengths at the relay", test::wrongLengths().size(), "all end with their close code");
}

TEST(WebSocketRules, EndsASocketOverAFrameWithoutAMask) {
    RunningRelay relay;
    for (const auto& frame : {test::bytes("\x81\x01x"), test::bytes("\x89\x00"), test::closeFrame(1000)})
        EXPECT_EQ(test::lastCloseCode(heardAfter(relay, frame)), 1002U);
}

TEST(WebSocketRules, RepeatsEveryCloseCodeThatMayBeSent) {
    RunningRelay relay;
    for (const auto code : test::closeCodes())
        EXPECT_EQ(test::lastCloseCode(heardAfter(relay, test::masked(test::closeFrame(code, "bye")))), code);
    EXPECT_EQ(test::lastCloseCode(heardAfter(relay, test::masked(test::bytes("\x88\x00")))), 1000U);
}

TEST(WebSocketRules, NeverRepeatsAForbiddenCloseCodeThatComesByteByByte) {
    RunningRelay relay;
    for (const unsigned code : {5000U, 5119U, 65535U}) {
        RawSocket socket{relay.port()};
        socket.write(goodRequest);
        socket.readHead();
        for (const char byte : test::masked(test::closeFrame(code))) socket.write({&byte, 1});
        // Cut where the code itself came in two pieces.
        EXPECT_EQ(test::lastCloseCode(socket.readToTheEnd()).value_or(1002U), 1002U) << code;
    }
}
