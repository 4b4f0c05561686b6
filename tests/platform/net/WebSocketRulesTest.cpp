#include "tests/platform/net/WebSocketTest.h"
#include "tests/support/Effort.h"
#include "tests/support/RawFrames.h"

#include <boost/asio/buffer.hpp>
#include <boost/asio/read.hpp>
#include <boost/asio/write.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http/read.hpp>
#include <boost/beast/http/string_body.hpp>

#include <functional>
#include <string>
#include <vector>

namespace morvex {
namespace {

namespace asio = boost::asio;
namespace http = boost::beast::http;
namespace websocket = boost::beast::websocket;

/// What a server does to an otherwise right answer.
using Change = std::function<void(websocket::response_type&)>;

/// A server that agrees to a WebSocket in changed words.
TestServer::Script agree(Change change) {
    return [change = std::move(change)](TestServer::Socket& socket) {
        boost::beast::flat_buffer buffer;
        http::request<http::string_body> request;
        http::read(socket, buffer, request);
        websocket::stream<TestServer::Socket&> peer(socket);
        peer.set_option(websocket::stream_base::decorator(change));
        peer.accept(request);
        readToTheEnd(socket);
    };
}

/// What a client says until it closes the WebSocket, or the connection.
std::string heardUntilClosed(TestServer::Socket& socket) {
    std::string heard;
    boost::system::error_code error;
    for (char byte = 0; !error && !test::lastCloseCode(heard);)
        if (asio::read(socket, asio::buffer(&byte, 1), error) == 1) heard += byte;
    return heard;
}

class WebSocketRules : public WebSocketTest {
  protected:
    /// Sends these bytes behind the opening. What the client said until it ended.
    std::string heardAfter(const std::string& frames) {
        std::promise<std::string> heard;
        TestServer server([&](TestServer::Socket& socket) {
            accept(socket);
            boost::system::error_code error;
            asio::write(socket, asio::buffer(frames), error);
            heard.set_value(heardUntilClosed(socket));
        });
        auto socket = connect(server);
        EXPECT_NE(failureOf(await(executor_, socket->receive())), "");
        socket.reset();
        return end(heard.get_future());
    }
};

TEST_F(WebSocketRules, AnAnswerToWhatNobodyAskedForIsRefused) {
    struct Row {
        const char* what;
        Change change;
    };

    const auto adding = [](http::field name, std::string value) -> Change {
        return [=](websocket::response_type& answer) { answer.insert(name, value); };
    };
    const auto setting = [](http::field name, std::string value) -> Change {
        return [=](websocket::response_type& answer) { answer.set(name, value); };
    };
    const std::vector<Row> rows{
        {"an extension", adding(http::field::sec_websocket_extensions, "permessage-deflate")},
        {"an unknown extension", adding(http::field::sec_websocket_extensions, "x-unknown")},
        {"an extension without a name", adding(http::field::sec_websocket_extensions, "")},
        {"a subprotocol", adding(http::field::sec_websocket_protocol, "chat")},
        {"a subprotocol without a name", adding(http::field::sec_websocket_protocol, "")},
        {"another protocol besides", setting(http::field::upgrade, "websocket, h2c")},
        {"another protocol in a second line", adding(http::field::upgrade, "h2c")},
        {"another protocol", setting(http::field::upgrade, "h2c")},
        {"two proofs", adding(http::field::sec_websocket_accept, "AAAAAAAAAAAAAAAAAAAAAAAAAAA=")},
        {"another proof", setting(http::field::sec_websocket_accept, "AAAAAAAAAAAAAAAAAAAAAAAAAAA=")},
        {"no change of protocols", setting(http::field::connection, "keep-alive")},
    };
    for (const auto& row : rows) {
        TestServer server(agree(row.change));
        EXPECT_NE(connectFailure("ws://" + server.authority()), "") << row.what;
    }
    for (const auto& change :
         {setting(http::field::upgrade, "WebSocket"), setting(http::field::connection, "UPGRADE"),
          adding(http::field::server, "anything/1.0")}) {
        TestServer server(agree(change));
        EXPECT_TRUE(connect(server));
    }
}

TEST_F(WebSocketRules, AWrongFrameEndsTheConnection) {
    for (const auto& row : test::wrongFrames())
        EXPECT_EQ(test::lastCloseCode(heardAfter(row.before + row.frame)), row.answer) << row.what;
    tell("wrong frames of a server", test::wrongFrames().size(), "all end with their close code");
}

TEST_F(WebSocketRules, AWrongLengthEndsTheConnection) {
    for (const auto& row : test::wrongLengths())
        EXPECT_EQ(test::lastCloseCode(heardAfter(row.frame)), row.answer) << row.what;
    tell("wrong lengths of a server", test::wrongLengths().size(), "all end with their close code");
}

TEST_F(WebSocketRules, AMaskedFrameEndsTheConnection) {
    for (const auto& frame : {test::bytes("\x81\x01x"), test::bytes("\x89\x00"), test::closeFrame(1000)})
        EXPECT_EQ(test::lastCloseCode(heardAfter(test::masked(frame))), 1002U);
}

TEST_F(WebSocketRules, ACloseCodeThatMayBeSentIsRepeated) {
    for (const auto code : test::closeCodes())
        EXPECT_EQ(test::lastCloseCode(heardAfter(test::closeFrame(code, "bye"))), code);
}

TEST_F(WebSocketRules, AForbiddenCloseCodeRightBehindTheAnswerIsNotRepeated) {
    std::promise<std::string> heard;
    TestServer server([&](TestServer::Socket& socket) {
        boost::beast::flat_buffer buffer;
        http::request<http::string_body> request;
        http::read(socket, buffer, request);
        websocket::detail::sec_ws_accept_type proof;
        websocket::detail::make_sec_ws_accept(proof, request[http::field::sec_websocket_key]);
        const auto bytes = "HTTP/1.1 101 Switching Protocols\r\nUpgrade: websocket\r\nConnection: Upgrade\r\n"
                           "Sec-WebSocket-Accept: " +
                           std::string(proof.data(), proof.size()) + "\r\n\r\n" + test::closeFrame(5000);
        asio::write(socket, asio::buffer(bytes));
        heard.set_value(heardUntilClosed(socket));
    });
    auto socket = connect(server);
    EXPECT_NE(failureOf(await(executor_, socket->receive())), "");
    EXPECT_EQ(test::lastCloseCode(end(heard.get_future())), 1002U);
}

} // namespace
} // namespace morvex
