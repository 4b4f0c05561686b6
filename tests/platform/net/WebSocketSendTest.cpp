#include "tests/platform/net/WebSocketTest.h"

#include <array>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

namespace morvex {
namespace {

using WebSocketSendTest = WebSocketTest;

TEST_F(WebSocketSendTest, ASlowReaderSlowsTheSender) {
    constexpr std::size_t moreThanTheSystemHolds = 64 * 1024 * 1024;
    std::promise<void> mayRead;
    std::promise<std::size_t> seen;
    TestServer server([&](TestServer::Socket& socket) {
        auto peer = accept(socket);
        mayRead.get_future().wait();
        seen.set_value(read(peer).size());
        readToTheEnd(socket);
    });
    auto socket = connect(server);
    auto sent = start(executor_, socket->sendText(std::string(moreThanTheSystemHolds, 'x')));
    passThroughTheNetworkThread();
    EXPECT_TRUE(waits(sent));
    mayRead.set_value();
    EXPECT_TRUE(end(std::move(sent)));
    EXPECT_EQ(end(seen.get_future()), moreThanTheSystemHolds);
}

TEST_F(WebSocketSendTest, WhatExceedsTheSendLimitFailsAndTheSocketStaysOpen) {
    constexpr std::size_t limit = 64 * 1024 * 1024;
    std::promise<void> mayRead;
    std::promise<std::vector<std::size_t>> seen;
    TestServer server([&](TestServer::Socket& socket) {
        auto peer = accept(socket);
        mayRead.get_future().wait();
        std::vector<std::size_t> sizes;
        for (int i = 0; i < 5; ++i) sizes.push_back(read(peer).size());
        seen.set_value(sizes);
        readToTheEnd(socket);
    });
    auto socket =
        *await(executor_, client_->connect({.url = "ws://" + server.authority(), .sendLimit = limit}, {}));
    auto first = start(executor_, socket->sendText(std::string(limit - 5, 'x')));
    auto second = start(executor_, socket->sendText(std::string(5, 'x')));
    EXPECT_EQ(failureOf(send(socket, "x")), "Spojení nestíhá odesílat.");
    EXPECT_TRUE(waits(first) && waits(second));
    mayRead.set_value();
    EXPECT_TRUE(end(std::move(first)));
    EXPECT_TRUE(end(std::move(second)));
    EXPECT_TRUE(send(socket, "late"));
    auto third = start(executor_, socket->sendText(std::string(limit - 5, 'y')));
    EXPECT_TRUE(send(socket, "again")) << "what was sent has made room";
    EXPECT_TRUE(end(std::move(third)));
    EXPECT_EQ(end(seen.get_future()), (std::vector<std::size_t>{limit - 5, 5, 4, limit - 5, 5}));
}

TEST_F(WebSocketSendTest, AnEmptyQueueTakesOneTextHoweverLong) {
    TestServer server(echo);
    auto socket =
        *await(executor_, client_->connect({.url = "ws://" + server.authority(), .sendLimit = 3}, {}));
    EXPECT_TRUE(send(socket, "longer than that"));
    EXPECT_EQ(receive(socket).value().data, "longer than that");
}

TEST_F(WebSocketSendTest, SendsOfOneThreadKeepTheirOrderThoughNobodyWaitsForThem) {
    constexpr int threads = 4;
    constexpr int sends = 200;
    TestServer server(echo);
    auto socket = connect(server);
    std::vector<std::thread> senders;
    for (int thread = 0; thread < threads; ++thread)
        senders.emplace_back([&socket, thread] {
            for (int i = 0; i < sends; ++i)
                (void)socket->sendText(std::to_string(thread) + " " + std::to_string(i));
        });
    std::array<int, threads> next{};
    for (int i = 0; i < threads * sends; ++i) {
        std::istringstream message(receive(socket).value().data);
        std::size_t thread = 0;
        int number = 0;
        message >> thread >> number;
        EXPECT_EQ(number, next.at(thread)++);
    }
    for (auto& sender : senders) sender.join();
}

TEST_F(WebSocketSendTest, SendsKeepTheirOrder) {
    TestServer server(echo);
    auto socket = connect(server);
    std::vector<std::future<Result<void>>> sent;
    for (int i = 0; i < 100; ++i) sent.push_back(start(executor_, socket->sendText(std::to_string(i))));
    for (int i = 0; i < 100; ++i) EXPECT_EQ(receive(socket).value().data, std::to_string(i));
    for (auto& one : sent) EXPECT_TRUE(end(std::move(one)));
}

} // namespace
} // namespace morvex
