#include "platform/net/BeastWebSocketClient.h"

#include "shared/base/NotReadingPong.h"
#include "tests/platform/net/WebSocketTest.h"

#include <boost/asio/buffer.hpp>
#include <boost/asio/read.hpp>
#include <boost/asio/write.hpp>
#include <boost/endian/conversion.hpp>

#include <array>
#include <atomic>
#include <string>
#include <thread>
#include <vector>

namespace morvex {
namespace {

namespace asio = boost::asio;
namespace websocket = boost::beast::websocket;
using boost::system::error_code;

using BeastWebSocket = WebSocketTest;

/// What `read_some` gives until the connection ends.
error_code endOf(websocket::stream<TestServer::Socket&>& peer) {
    std::array<char, 4096> ignored{};
    error_code error;
    while (!error) peer.read_some(asio::buffer(ignored), error);
    return error;
}

TEST_F(BeastWebSocket, CarriesTextBothWays) {
    TestServer server(echo);
    auto socket = connect(server);
    for (const std::string& text : {std::string("žluťoučký kůň"), std::string(), std::string("a\0b", 3)}) {
        EXPECT_TRUE(send(socket, text));
        auto frame = receive(socket);
        ASSERT_TRUE(frame);
        EXPECT_EQ(frame->kind, WebSocketFrame::Kind::text);
        EXPECT_EQ(frame->data, text);
    }
}

TEST_F(BeastWebSocket, TellsBinaryMessagesFromText) {
    TestServer server([](TestServer::Socket& socket) {
        auto peer = accept(socket);
        peer.binary(true);
        write(peer, "\xff\xfe");
        endOf(peer);
    });
    auto socket = connect(server);
    auto frame = receive(socket);
    ASSERT_TRUE(frame);
    EXPECT_EQ(frame->kind, WebSocketFrame::Kind::binary);
    EXPECT_EQ(frame->data, "\xff\xfe");
}

TEST_F(BeastWebSocket, CarriesLargeMessagesWhole) {
    TestServer server(echo);
    auto socket = connect(server);
    for (std::size_t size : {std::size_t{300} * 1024, std::size_t{1024} * 1024, frameLimit}) {
        std::string text(size, 'x');
        for (std::size_t i = 0; i < size; i += 1000) text[i] = static_cast<char>('a' + i / 1000 % 26);
        EXPECT_TRUE(send(socket, text));
        auto frame = receive(socket);
        ASSERT_TRUE(frame) << frame.error().popis().czech();
        EXPECT_TRUE(frame->data == text) << size;
    }
}

TEST_F(BeastWebSocket, SendsAMessageInOneFrame) {
    constexpr std::uint64_t size = 300 * 1024;
    std::promise<std::array<std::uint8_t, 10>> header;
    TestServer server([&header](TestServer::Socket& socket) {
        auto peer = accept(socket);
        std::array<std::uint8_t, 10> bytes{};
        asio::read(socket, asio::buffer(bytes));
        header.set_value(bytes);
        readToTheEnd(socket);
    });
    auto socket = connect(server);
    EXPECT_TRUE(send(socket, std::string(size, 'x')));
    auto seen = end(header.get_future());
    EXPECT_EQ(seen[0], 0x81) << "the final frame of a text, not compressed";
    EXPECT_EQ(seen[1], 0xff) << "masked, with a length of 64 bits";
    EXPECT_EQ(boost::endian::load_big_u64(&seen[2]), size);
}

TEST_F(BeastWebSocket, RefusesTextThatIsNotUtf8) {
    TestServer server([](TestServer::Socket& socket) {
        auto peer = accept(socket);
        write(peer, "\xff");
        endOf(peer);
    });
    auto socket = connect(server);
    EXPECT_NE(failureOf(receive(socket)), "");
}

TEST_F(BeastWebSocket, ASlowReceiverSlowsThePeerAndLosesNothing) {
    constexpr int messages = 64;
    std::atomic<int> written = 0;
    TestServer server([&written](TestServer::Socket& socket) {
        auto peer = accept(socket);
        for (; written < messages; ++written)
            write(peer, std::string(1024 * 1024, static_cast<char>('0' + written)));
        endOf(peer);
    });
    auto socket = connect(server);
    passThroughTheNetworkThread();
    EXPECT_LT(written, messages);
    for (int i = 0; i < messages; ++i)
        EXPECT_TRUE(receive(socket).value().data == std::string(1024 * 1024, static_cast<char>('0' + i)))
            << i;
}

TEST_F(BeastWebSocket, APingEndsWithItsPongWhileNobodyReceives) {
    TestServer server(echo);
    auto socket = connect(server);
    EXPECT_TRUE(send(socket, "waits to be received"));
    auto first = start(executor_, socket->ping());
    auto second = start(executor_, socket->ping());
    EXPECT_TRUE(end(std::move(first)));
    EXPECT_TRUE(end(std::move(second)));
    EXPECT_EQ(receive(socket).value().data, "waits to be received");
}

TEST_F(BeastWebSocket, APingWaitsForItsOwnPongUntilTheEnd) {
    TestServer server([](TestServer::Socket& socket) {
        auto peer = accept(socket);
        peer.pong({});
        peer.pong("7");
        peer.pong("not a number");
        write(peer, "the pongs have passed");
        readToTheEnd(socket);
    });
    auto socket = connect(server);
    auto ping = start(executor_, socket->ping());
    EXPECT_EQ(receive(socket).value().data, "the pongs have passed");
    passThroughTheNetworkThread();
    EXPECT_TRUE(waits(ping));
    socket->close(CloseCode::abnormal);
    EXPECT_NE(failureOf(end(std::move(ping))), "");
}

TEST_F(BeastWebSocket, PingsEndWhenThePeerTellsThatItDoesNotReadAtPresent) {
    std::promise<void> isAsked;
    TestServer server([&isAsked](TestServer::Socket& socket) {
        auto peer = accept(socket);
        isAsked.get_future().wait();
        peer.pong({notReadingPong.data(), notReadingPong.size()});
        readToTheEnd(socket);
    });
    auto socket = connect(server);
    auto first = start(executor_, socket->ping());
    auto second = start(executor_, socket->ping());
    passThroughTheNetworkThread();
    EXPECT_TRUE(waits(first) && waits(second));
    isAsked.set_value();
    for (auto* ping : {&first, &second}) EXPECT_TRUE(end(std::move(*ping)));
}

TEST_F(BeastWebSocket, AnswersThePingsOfItsPeer) {
    std::promise<std::string> pong;
    TestServer server([&pong](TestServer::Socket& socket) {
        auto peer = accept(socket);
        peer.control_callback([&pong](websocket::frame_type kind, boost::beast::string_view payload) {
            if (kind == websocket::frame_type::pong) pong.set_value(std::string(payload));
        });
        peer.ping("are you there?");
        endOf(peer);
    });
    auto socket = connect(server);
    EXPECT_EQ(end(pong.get_future()), "are you there?");
}

TEST_F(BeastWebSocket, TheCloseCodeOfThePeerStandsInTheFailure) {
    for (int code : {1000, 1001, 4321}) {
        TestServer server([code](TestServer::Socket& socket) {
            auto peer = accept(socket);
            write(peer, "last words");
            peer.close(static_cast<websocket::close_code>(code));
        });
        auto socket = connect(server);
        auto ping = start(executor_, socket->ping());
        EXPECT_EQ(receive(socket).value().data, "last words");
        EXPECT_TRUE(failureOf(receive(socket)).contains(std::to_string(code)));
        end(std::move(ping));
        EXPECT_NE(failureOf(send(socket, "late")), "");
    }
}

TEST_F(BeastWebSocket, WhatArrivedBeforeAFailureCanStillBeReceived) {
    TestServer server([](TestServer::Socket& socket) {
        auto peer = accept(socket);
        write(peer, "first");
        write(peer, "second");
        peer.close({});
    });
    auto socket = connect(server);
    while (await(executor_, socket->ping())) continue;
    EXPECT_EQ(receive(socket).value().data, "first");
    EXPECT_EQ(receive(socket).value().data, "second");
    EXPECT_NE(failureOf(receive(socket)), "");
}

TEST_F(BeastWebSocket, AResetByThePeerFailsWhatWaits) {
    std::promise<void> mayReset;
    TestServer server([&mayReset](TestServer::Socket& socket) {
        auto peer = accept(socket);
        mayReset.get_future().wait();
        resetConnection(socket);
    });
    auto socket = connect(server);
    auto received = start(executor_, socket->receive());
    auto ping = start(executor_, socket->ping());
    mayReset.set_value();
    EXPECT_NE(failureOf(end(std::move(received))), "");
    EXPECT_NE(failureOf(end(std::move(ping))), "");
}

TEST_F(BeastWebSocket, ClosingTellsItsCodeAndFailsWhatWaits) {
    for (const auto& [code, seen] : {std::pair{CloseCode::normal, websocket::close_code::normal},
                                     std::pair{CloseCode::goingAway, websocket::close_code::going_away}}) {
        std::promise<websocket::close_reason> reason;
        TestServer server([&reason](TestServer::Socket& socket) {
            auto peer = accept(socket);
            EXPECT_EQ(endOf(peer), websocket::error::closed);
            reason.set_value(peer.reason());
        });
        auto socket = connect(server);
        auto received = start(executor_, socket->receive());
        passThroughTheNetworkThread();
        socket->close(code);
        socket->close(code);
        EXPECT_NE(failureOf(end(std::move(received))), "");
        EXPECT_NE(failureOf(await(executor_, socket->ping())), "");
        socket.reset();
        const auto told = end(reason.get_future());
        EXPECT_EQ(told.code, seen);
        EXPECT_EQ(told.reason, "");
    }
}

TEST_F(BeastWebSocket, AFarewellThatNobodyAnswersIsBounded) {
    client_ = std::make_unique<BeastWebSocketClient>(NetworkLimits{.closing = std::chrono::milliseconds(50)});
    std::promise<error_code> ended;
    TestServer server([&ended](TestServer::Socket& socket) {
        auto peer = accept(socket);
        ended.set_value(readToTheEnd(socket));
    });
    auto socket = connect(server);
    socket->close(CloseCode::goingAway);
    EXPECT_EQ(end(ended.get_future()), asio::error::eof);
}

TEST_F(BeastWebSocket, AFarewellBehindAStuckMessageIsBounded) {
    client_ = std::make_unique<BeastWebSocketClient>(NetworkLimits{.closing = std::chrono::milliseconds(50)});
    std::promise<void> mayRead;
    std::promise<error_code> ended;
    TestServer server([&](TestServer::Socket& socket) {
        auto peer = accept(socket);
        mayRead.get_future().wait();
        ended.set_value(readToTheEnd(socket));
    });
    auto socket = connect(server);
    auto sent = start(executor_, socket->sendText(std::string(64 * 1024 * 1024, 'x')));
    auto queued = start(executor_, socket->sendText("behind it"));
    passThroughTheNetworkThread();
    socket->close(CloseCode::goingAway);
    EXPECT_NE(failureOf(end(std::move(sent))), "");
    EXPECT_NE(failureOf(end(std::move(queued))), "");
    client_.reset();
    mayRead.set_value();
    EXPECT_TRUE(end(ended.get_future()));
}

TEST_F(BeastWebSocket, AnAbnormalCloseResetsTheConnectionAtOnce) {
    std::promise<error_code> ended;
    TestServer server([&ended](TestServer::Socket& socket) {
        auto peer = accept(socket);
        ended.set_value(readToTheEnd(socket));
    });
    auto socket = connect(server);
    auto received = start(executor_, socket->receive());
    passThroughTheNetworkThread();
    socket->close(CloseCode::abnormal);
    EXPECT_NE(failureOf(end(std::move(received))), "");
    EXPECT_EQ(end(ended.get_future()), asio::error::connection_reset);
    socket->close(CloseCode::abnormal);
    socket->close(CloseCode::goingAway);
    EXPECT_NE(failureOf(receive(socket)), "");
}

TEST_F(BeastWebSocket, ASocketMayGoWhileItsCallsWait) {
    std::promise<error_code> ended;
    TestServer server([&ended](TestServer::Socket& socket) {
        auto peer = accept(socket);
        ended.set_value(readToTheEnd(socket));
    });
    auto socket = connect(server);
    auto received = start(executor_, socket->receive());
    auto ping = start(executor_, socket->ping());
    auto later = socket->receive();
    passThroughTheNetworkThread();
    socket.reset();
    EXPECT_NE(failureOf(end(std::move(received))), "");
    EXPECT_NE(failureOf(end(std::move(ping))), "");
    EXPECT_NE(failureOf(await(executor_, std::move(later))), "");
    EXPECT_EQ(end(ended.get_future()), asio::error::connection_reset);
}

TEST_F(BeastWebSocket, AClientMayGoBeforeItsSockets) {
    std::promise<error_code> ended;
    TestServer server([&ended](TestServer::Socket& socket) {
        auto peer = accept(socket);
        ended.set_value(readToTheEnd(socket));
    });
    auto socket = connect(server);
    auto received = start(executor_, socket->receive());
    passThroughTheNetworkThread();
    client_.reset();
    EXPECT_NE(failureOf(end(std::move(received))), "");
    EXPECT_EQ(end(ended.get_future()), asio::error::connection_reset);
    EXPECT_NE(failureOf(send(socket, "late")), "");
    EXPECT_NE(failureOf(await(executor_, socket->ping())), "");
    socket->close(CloseCode::goingAway);
}

TEST_F(BeastWebSocket, AClientMayGoAsSoonAsItIsMade) {
    for (int round = 0; round < 100; ++round) {
        BeastWebSocketClient client;
        auto socket = start(executor_, client.connect({"ws://127.0.0.1:1/"}, {}));
        if (round % 2 == 0) end(std::move(socket));
    }
}

TEST_F(BeastWebSocket, ClosesFromManyThreadsMeetACallInProgress) {
    TestServer server(echo);
    for (int round = 0; round < 50; ++round) {
        auto socket = connect(server);
        auto received = start(executor_, socket->receive());
        auto sent = start(executor_, socket->sendText("text"));
        std::thread first([socket] { socket->close(CloseCode::goingAway); });
        std::thread second([socket] { socket->close(CloseCode::abnormal); });
        first.join();
        second.join();
        end(std::move(sent));
        end(std::move(received));
        EXPECT_NE(failureOf(receive(socket)), "");
    }
}

} // namespace
} // namespace morvex
