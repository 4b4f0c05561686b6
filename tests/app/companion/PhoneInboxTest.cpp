#include "app/link/PhoneInbox.h"

#include "platform/memory/ManualExecutor.h"

#include <gtest/gtest.h>

namespace morvex {
namespace {

Task<void> nothing() {
    co_return;
}

TEST(PhoneInboxTest, ASecondHandlerOfAKindEndsTheProcess) {
    PhoneInbox inbox;
    inbox.take<MacPayload::Cancel>([](const MacPayload::Cancel&, const Delivery&) { return nothing(); });
    EXPECT_DEATH(
        inbox.take<MacPayload::Cancel>([](const MacPayload::Cancel&, const Delivery&) { return nothing(); }),
        "two handlers");
}

TEST(PhoneInboxTest, ASettingWaitsForTheOneBeforeAndIsNotTakenOfAPhoneThatWasAbandoned) {
    ManualExecutor executor;
    PhoneInbox inbox;
    auto first = executor.run(inbox.settingsTurn());
    ASSERT_TRUE(first && *first);
    std::optional<bool> isTaken;
    executor.start([](PhoneInbox* box, std::optional<bool>* taken) -> Task<void> {
        *taken = (co_await box->settingsTurn()).has_value();
    }(&inbox, &isTaken));
    executor.runUntilIdle();
    EXPECT_EQ(isTaken, std::nullopt);
    inbox.abandon();
    first.reset();
    executor.runUntilIdle();
    EXPECT_EQ(isTaken, false);
    EXPECT_TRUE(executor.run(inbox.settingsTurn()).value());
}

} // namespace
} // namespace morvex
