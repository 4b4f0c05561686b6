#include "platform/memory/ScriptedSockets.h"

#include "platform/memory/ManualExecutor.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace morvex {
namespace {

using Headers = std::vector<std::pair<std::string, std::string>>;

class ScriptedSocketsTest : public testing::Test {
  protected:
    Result<std::shared_ptr<WebSocket>> connect(WebSocketRequest request, std::stop_token stop = {}) {
        return executor.run(sockets.connect(std::move(request), std::move(stop))).value();
    }

    /// What became of a text: "sent", "waits" or "refused".
    std::string fateOf(std::string text) {
        const auto end = executor.run(socket->sendText(std::move(text)));
        if (!end) return "waits";
        return *end ? "sent" : "refused";
    }

    ManualExecutor executor;
    ScriptedSockets sockets;
    std::shared_ptr<ScriptedSocket> socket = sockets.layOut();
};

TEST_F(ScriptedSocketsTest, RecordTheHeadersOfEveryAttempt) {
    const Headers told{{"Authorization", "Bearer x"}, {"X-Other", ""}};
    EXPECT_TRUE(connect({.url = "ws://first", .headers = told}));
    EXPECT_FALSE(connect({.url = "ws://second"})) << "no other socket was prepared";
    EXPECT_EQ(sockets.urls, (std::vector<std::string>{"ws://first", "ws://second"}));
    EXPECT_EQ(sockets.headers, (std::vector<Headers>{told, {}}));
}

TEST_F(ScriptedSocketsTest, RefuseWhatWouldWaitBeyondTheSendLimit) {
    ASSERT_TRUE(connect({.url = "ws://relay", .sendLimit = 10}));
    EXPECT_EQ(fateOf(std::string(11, 'a')), "sent") << "nothing waits";
    socket->holdSends();
    EXPECT_EQ(fateOf(std::string(11, 'b')), "waits") << "an empty queue takes one text however long";
    EXPECT_EQ(fateOf("c"), "refused");
    socket->answerSends({});
    EXPECT_EQ(fateOf("dddd"), "waits");
    EXPECT_EQ(fateOf("eeeeee"), "waits");
    EXPECT_EQ(fateOf("f"), "refused");
    socket->takeSends();
    EXPECT_EQ(fateOf("g"), "sent") << "the socket stays open";
    EXPECT_EQ(socket->sent,
              (std::vector<std::string>{std::string(11, 'a'), std::string(11, 'b'), "dddd", "eeeeee", "g"}));
}

TEST_F(ScriptedSocketsTest, AnAttemptThatIsStoppedTakesNoSocket) {
    std::stop_source stop;
    stop.request_stop();
    EXPECT_FALSE(connect({.url = "ws://relay"}, stop.get_token()));
    EXPECT_TRUE(connect({.url = "ws://relay"}));
}

} // namespace
} // namespace morvex
