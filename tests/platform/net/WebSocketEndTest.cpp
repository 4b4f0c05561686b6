#include "tests/platform/net/WebSocketTest.h"

#include <future>

namespace morvex {
namespace {

/// What a socket tells of its end to whoever takes nothing.
class WebSocketEnd : public WebSocketTest {};

TEST_F(WebSocketEnd, IsToldWhileWhatArrivedBeforeItStillWaits) {
    std::promise<void> mayEnd;
    TestServer server([&mayEnd](TestServer::Socket& socket) {
        auto peer = accept(socket);
        write(peer, "last words");
        mayEnd.get_future().wait();
        peer.close({});
    });
    auto socket = connect(server);
    EXPECT_FALSE(socket->ended().stop_requested());
    mayEnd.set_value();
    while (await(executor_, socket->ping())) continue;
    EXPECT_TRUE(socket->ended().stop_requested());
    EXPECT_EQ(await(executor_, socket->receive()).value().data, "last words");
}

TEST_F(WebSocketEnd, OfItsOwnMakingIsToldTooAndAlsoAfterItsLife) {
    TestServer server([](TestServer::Socket& socket) {
        auto peer = accept(socket);
        readToTheEnd(socket);
    });
    auto socket = connect(server);
    const auto ended = socket->ended();
    auto received = start(executor_, socket->receive());
    socket->close(CloseCode::goingAway);
    socket.reset();
    end(std::move(received));
    EXPECT_TRUE(ended.stop_requested());
}

} // namespace
} // namespace morvex
