#include "tests/platform/net/WebSocketTest.h"

#include <boost/asio/buffer.hpp>

#include <array>
#include <future>
#include <string>
#include <thread>

namespace morvex {
namespace {

constexpr std::size_t mebibyte = std::size_t{1024} * 1024;

/// What a socket takes of a peer that sends much.
class WebSocketLimits : public WebSocketTest {
  protected:
    Result<WebSocketFrame> receive(const std::shared_ptr<WebSocket>& socket) {
        return await(executor_, socket->receive());
    }

    /// Answers pings until the connection ends.
    static void endOf(Peer& peer) {
        std::array<char, 4096> ignored{};
        boost::system::error_code error;
        while (!error) peer.read_some(boost::asio::buffer(ignored), error);
    }
};

TEST_F(WebSocketLimits, ReceivesAMessageOfTheLimitAndPassesOverLongerOnes) {
    TestServer server([](TestServer::Socket& socket) {
        auto peer = accept(socket);
        write(peer, std::string(4 * mebibyte, 'x'));
        write(peer, std::string(4 * mebibyte + 1, 'x'));
        write(peer, std::string(32 * mebibyte, 'x'));
        write(peer, "behind them");
        endOf(peer);
    });
    auto socket = connect(server);
    auto frame = receive(socket);
    ASSERT_TRUE(frame) << frame.error().popis().czech();
    EXPECT_EQ(frame->data.size(), 4 * mebibyte);
    auto next = receive(socket);
    ASSERT_TRUE(next) << next.error().popis().czech();
    EXPECT_EQ(next->data, "behind them");
}

TEST_F(WebSocketLimits, BreaksOverAMessageThatGoesOnAndOn) {
    TestServer server([](TestServer::Socket& socket) {
        auto peer = accept(socket);
        write(peer, std::string(32 * mebibyte + 1, 'x'));
        write(peer, "behind it");
        endOf(peer);
    });
    auto socket = connect(server);
    EXPECT_NE(failureOf(receive(socket)), "");
}

TEST_F(WebSocketLimits, SaysThatItHoldsBackWhileMuchWaits) {
    std::promise<void> mayEnd;
    TestServer server([&mayEnd](TestServer::Socket& socket) {
        auto peer = accept(socket);
        for (int i = 0; i < 5; ++i) write(peer, std::string(frameLimit / 4, 'x'));
        mayEnd.get_future().wait();
    });
    auto socket = connect(server);
    while (!socket->reading().isHeldBack) std::this_thread::yield();
    EXPECT_EQ(socket->reading().pauses, 1U);
    for (int i = 0; i < 5; ++i) EXPECT_TRUE(receive(socket));
    EXPECT_EQ(socket->reading(), (WebSocket::Reading{false, socket->reading().pauses}));
    mayEnd.set_value();
}

TEST_F(WebSocketLimits, WhatHadArrivedCanStillBeReceivedAfterAnAbnormalClose) {
    TestServer server([](TestServer::Socket& socket) {
        auto peer = accept(socket);
        write(peer, "first");
        write(peer, "second");
        endOf(peer);
    });
    auto socket = connect(server);
    // The pong comes behind them.
    ASSERT_TRUE(await(executor_, socket->ping()));
    socket->close(CloseCode::abnormal);
    EXPECT_EQ(receive(socket).value().data, "first");
    EXPECT_EQ(receive(socket).value().data, "second");
    EXPECT_NE(failureOf(receive(socket)), "");
}

} // namespace
} // namespace morvex
