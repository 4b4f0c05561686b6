#include "platform/ports/NoPersonalData.h"

#include "platform/memory/ManualExecutor.h"

#include <gtest/gtest.h>

namespace morvex {
namespace {

TEST(NoPersonalData, EveryCallSaysThatThereIsNoService) {
    ManualExecutor executor;
    NoPersonalData none;
    const auto says = [&executor](auto task) {
        const auto result = executor.run(std::move(task)).value();
        return result ? "no failure" : result.error().popis().czech();
    };
    const std::string words = "Tento počítač nemá službu kalendářů, připomínek a kontaktů.";
    EXPECT_EQ(none.calendars.access(), DataAccess::restricted);
    EXPECT_EQ(none.reminders.access(), DataAccess::restricted);
    EXPECT_EQ(none.contacts.access(), DataAccess::restricted);
    EXPECT_FALSE(none.calendars.asksUser());
    EXPECT_EQ(says(none.calendars.requestAccess({})), words);
    EXPECT_EQ(says(none.calendars.calendars({})), words);
    EXPECT_EQ(says(none.calendars.defaultCalendar({})), words);
    EXPECT_EQ(says(none.calendars.events({}, {}, {}, 1, {})), words);
    EXPECT_EQ(says(none.calendars.event("", {})), words);
    EXPECT_EQ(says(none.calendars.create({}, {})), words);
    EXPECT_EQ(says(none.calendars.update("", {}, {})), words);
    EXPECT_EQ(says(none.calendars.remove("", {})), words);
    EXPECT_EQ(says(none.reminders.requestAccess({})), words);
    EXPECT_EQ(says(none.reminders.lists({})), words);
    EXPECT_EQ(says(none.reminders.defaultList({})), words);
    EXPECT_EQ(says(none.reminders.reminders(true, {})), words);
    EXPECT_EQ(says(none.reminders.create({}, {})), words);
    EXPECT_EQ(says(none.reminders.complete("", {})), words);
    EXPECT_EQ(says(none.contacts.requestAccess({})), words);
    EXPECT_EQ(says(none.contacts.named("", 1, {})), words);
}

} // namespace
} // namespace morvex
