#include "platform/memory/ScriptedHttp.h"

#include "platform/memory/ManualExecutor.h"

#include <gtest/gtest.h>

namespace morvex {
namespace {

TEST(ScriptedHttp, AnExchangeThatIsStoppedFailsAndTakesNoReply) {
    ManualExecutor executor;
    ScriptedHttp http;
    http.replies.push_back({204, ""});
    std::stop_source stop;
    stop.request_stop();
    EXPECT_FALSE(executor.run(http.send({.url = "http://stopped", .stop = stop.get_token()})).value());
    EXPECT_EQ(executor.run(http.send({.url = "http://asked"})).value()->status, 204);
    EXPECT_EQ(http.requests.size(), 2U) << "both were asked";
}

} // namespace
} // namespace morvex
