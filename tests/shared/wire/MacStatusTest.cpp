#include "shared/wire/MacStatus.h"

#include "shared/wire/Json.h"
#include "shared/wire/TalkSpanError.h"

#include <gtest/gtest.h>

namespace morvex {
namespace {

constexpr auto json =
    R"({"protocolVersion":"1.4","appVersion":"1.0","deviceName":"Studio","tools":[],)"
    R"("claude":{"installed":true,"version":"2.0","source":"/usr/bin/claude"},)"
    R"("codex":{"installed":false,"problem":"Codex tu není."},"mailAvailable":true,"allowedFolders":["Plocha"],)"
    R"("onPower":true,"sentAt":"2026-11-16T00:45:56Z"})";

MacStatus status() {
    return {.protocolVersion = ProtocolVersion::current,
            .appVersion = "1.0",
            .deviceName = "Studio",
            .tools = {},
            .claude = {true, "2.0", "/usr/bin/claude", {}},
            .codex = {false, {}, {}, Sentence("Codex tu není.")},
            .mailAvailable = true,
            .allowedFolders = {"Plocha"},
            .runningTask = {},
            .onPower = true,
            .sentAt = dateFromSeconds(1794789956)};
}

TEST(MacStatus, LeavesOutTheTaskThatDoesNotRun) {
    EXPECT_EQ(encode(status()), json);
    EXPECT_EQ(decode<MacStatus>(json).value(), status());
}

TEST(MacStatus, CarriesTheRunningTask) {
    auto busy = status();
    busy.runningTask = RunningTask{"R", Uuid{}, "mac.codex.run", dateFromSeconds(0), "Píšu testy"};
    const auto text = encode(busy);
    EXPECT_NE(
        text.find(R"("runningTask":{"requestID":"R","workItemID":"00000000-0000-0000-0000-000000000000",)"
                  R"("tool":"mac.codex.run","startedAt":"1970-01-01T00:00:00Z","progress":"Píšu testy"})"),
        std::string::npos);
    EXPECT_EQ(decode<MacStatus>(text).value(), busy);
}

TEST(MacStatus, FailsAsAForeignVersionWhenTheVersionCannotBeRead) {
    const auto read = decode<MacStatus>(R"({"protocolVersion":"beta"})");
    ASSERT_FALSE(read);
    EXPECT_NE(read.error().as<TalkSpanError>(), nullptr);
}

} // namespace
} // namespace morvex
