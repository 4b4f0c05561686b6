#include "shared/wire/Json.h"
#include "tests/phone/PhoneFixture.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <filesystem>

namespace morvex {
namespace {

using testing::HasSubstr;
using TaskCommandsTest = PhoneFixture;

TEST_F(TaskCommandsTest, TasksOfTheMacAreShownAndAcknowledged) {
    startInSession({"call", "mac.status"});
    (void)mac.take();
    WorkItem item;
    item.title = "Oprava testů";
    item.status = WorkItemStatus::completed;
    item.summary = "Opraveno.";
    item.revision = 7;
    send({MacPayload::WorkItemUpdate{item}}, "work-item:" + item.id.text());
    EXPECT_THAT(err.str(), HasSubstr("úkol: Oprava testů — hotovo: Opraveno.\n"));
    auto received = mac.take();
    ASSERT_EQ(received.size(), 1U);
    EXPECT_EQ(received[0].payload, (MacPayload{MacPayload::WorkItemAck{item.id, 7}}));
}

TEST_F(TaskCommandsTest, TasksAreListedAfterTheMacHasToldWhatWasMissed) {
    startInSession({"tasks"});
    WorkItem item;
    item.title = "Oprava testů";
    item.status = WorkItemStatus::failed;
    item.lastError = "Nejde to.";
    item.revision = 7;
    item.updatedAt = dateFromSeconds(1'700'000'000);
    item.agent = AgentContinuation{"codex", "s1", "Projekty"};
    send({MacPayload::WorkItemUpdate{item}}, "work-item:" + item.id.text());
    EXPECT_EQ(out.str(), "");
    auto received = mac.take();
    ASSERT_EQ(received.size(), 2U);
    EXPECT_EQ(received[0].payload.as<MacPayload::ToolCall>()->name, "mac.status");
    EXPECT_EQ(received[1].payload, (MacPayload{MacPayload::WorkItemAck{item.id, 7}}));
    send({MacPayload::ToolResult{true, "{}"}}, received[0].requestID);
    EXPECT_EQ(out.str(), "Oprava testů — nepovedlo se: Nejde to.\n"
                         "  codex ve složce Projekty, 2023-11-14T22:13:20Z, work_item_id "
                         "00000000-0000-0000-0000-000000000000\n");
    EXPECT_EQ(ended, ExitCode::done);
}

TEST_F(TaskCommandsTest, WhatAnAgentSaysCannotPassForALineOfTheProgram) {
    startInSession({"tasks"});
    const std::string forged = "x\nMac žádá o potvrzení: vše";
    WorkItem item;
    item.title = forged;
    item.summary = forged;
    item.agent = AgentContinuation{forged, "s1", forged};
    send({MacPayload::WorkItemUpdate{item}}, "work-item:" + item.id.text());
    send({MacPayload::ToolProgress{forged}}, "req-1");
    item.lastError = forged;
    item.revision = 9;
    send({MacPayload::WorkItemUpdate{item}}, "work-item:" + item.id.text());
    send({MacPayload::ToolResult{true, "{}"}}, mac.take().front().requestID);
    EXPECT_THAT(err.str(), HasSubstr("průběh: x Mac žádá o potvrzení: vše\n"));
    for (const auto& shown : {out.str(), err.str()})
        EXPECT_THAT(shown, testing::Not(HasSubstr("\nMac žádá"))) << shown;
    EXPECT_EQ(std::ranges::count(out.str(), '\n'), 2);
}

TEST_F(TaskCommandsTest, WithoutTheMacWhatItToldBeforeIsListedAndTheFailureTold) {
    WorkItem item;
    item.title = "Dřívější";
    item.revision = 1;
    EXPECT_TRUE(tasks.take(item));
    paired();
    start({"tasks", "--timeout", "5"});
    mac.logIn(false);
    run();
    pass(std::chrono::seconds(5));
    EXPECT_EQ(ended, ExitCode::macUnreachable);
    EXPECT_THAT(out.str(), HasSubstr("Dřívější"));
    EXPECT_THAT(err.str(), HasSubstr("morvex-phone: "));
}

TEST_F(TaskCommandsTest, ATaskThatCannotBeKeptIsNotAcknowledged) {
    startInSession({"watch"});
    std::filesystem::create_directory(folder.path() / "tasks.json");
    send({MacPayload::WorkItemUpdate{WorkItem{}}}, "work-item:x");
    EXPECT_THAT(err.str(), HasSubstr("Úlohu nejde uložit: "));
    EXPECT_TRUE(mac.take().empty());
}

TEST_F(TaskCommandsTest, TasksOfEarlierSessionsAreListedAsJson) {
    WorkItem item;
    item.title = "Dřívější";
    item.revision = 1;
    EXPECT_TRUE(tasks.take(item));
    startInSession({"--json", "tasks"});
    send({MacPayload::ToolResult{true, "{}"}}, mac.take().front().requestID);
    EXPECT_EQ(out.str(), "[" + encode(item) + "]\n");
}

} // namespace
} // namespace morvex
