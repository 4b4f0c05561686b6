#pragma once

#include "foundation/ThreadExecutor.h"
#include "platform/net/BeastWebSocketClient.h"
#include "tests/platform/net/NetworkTest.h"
#include "tests/support/TestServer.h"

#include <boost/beast/websocket/stream.hpp>

#include <memory>
#include <string>

namespace morvex {

/// A client, and a thread on which its callers wait.
class WebSocketTest : public testing::Test {
  protected:
    using Peer = boost::beast::websocket::stream<TestServer::Socket&>;

    /// The server's end of a WebSocket, open.
    static Peer accept(TestServer::Socket& socket) {
        Peer peer(socket);
        peer.read_message_max(0);
        peer.accept();
        return peer;
    }

    static std::string read(Peer& peer);
    static void write(Peer& peer, const std::string& text);

    /// A script that sends every message back.
    static void echo(TestServer::Socket& socket);

    std::shared_ptr<WebSocket> connect(const TestServer& server);
    std::string connectFailure(const std::string& url);

    Result<WebSocketFrame> receive(const std::shared_ptr<WebSocket>& socket) {
        return await(executor_, socket->receive());
    }

    Result<void> send(const std::shared_ptr<WebSocket>& socket, std::string text) {
        return await(executor_, socket->sendText(std::move(text)));
    }

    /// After this the network thread has come round to everything that was asked of it before.
    void passThroughTheNetworkThread() {
        TestServer server(echo);
        auto socket = connect(server);
        EXPECT_TRUE(send(socket, "ping"));
        EXPECT_EQ(receive(socket).value().data, "ping");
    }

    ThreadExecutor executor_{"test"};
    std::unique_ptr<BeastWebSocketClient> client_ = std::make_unique<BeastWebSocketClient>();
};

} // namespace morvex
