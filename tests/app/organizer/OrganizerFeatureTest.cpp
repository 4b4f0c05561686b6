#include "app/organizer/OrganizerFeature.h"

#include "tests/support/CompanionHarness.h"

#include <algorithm>
#include <chrono>

namespace morvex {
namespace {

using namespace std::chrono_literals;

class OrganizerFeatureTest : public CompanionHarness {
  protected:
    OrganizerFeatureTest() { calendars.has = {{"1", "Práce", "Doma", true}}; }

    bool isOffered(const std::string& name) {
        return std::ranges::count(companion->toolGate().nabizeneNastroje(), name, &ToolDescriptor::name) == 1;
    }

    bool isOffered() { return isOffered("mac.calendar.list"); }

    [[nodiscard]] bool isConnecting() const { return !sockets.urls.empty(); }
};

TEST_F(OrganizerFeatureTest, TheFirstOfferIsTrue) {
    startPaired();
    EXPECT_TRUE(isOffered()) << "before the phone is connected";
    EXPECT_EQ(calendars.requests, 0) << "access was there";
}

TEST_F(OrganizerFeatureTest, WhatIsOutOfReachIsLookedForAtTheStart) {
    calendars.given = reminders.given = contacts.given = DataAccess::restricted;
    calendars.givenWhenAsked = DataAccess::full;
    reminders.requestFailure = contacts.requestFailure = TextError("Není sběrnice.");
    startPaired();
    EXPECT_TRUE(isOffered());
    EXPECT_GT(reminders.requests, 0);
    EXPECT_EQ(features->organizer.reminders().accessError(), Sentence("Není sběrnice."));
    EXPECT_EQ(features->organizer.contacts().accessError(), Sentence("Není sběrnice."));
}

TEST_F(OrganizerFeatureTest, AServiceThatHangsHoldsUpTheStartForFiveSeconds) {
    calendars.given = DataAccess::restricted;
    calendars.givenWhenAsked = DataAccess::full;
    calendars.requestHangs = true;
    startPaired();
    EXPECT_FALSE(isConnecting());
    clock.advance(4999ms);
    executor.runUntilIdle();
    EXPECT_FALSE(isConnecting());
    clock.advance(1ms);
    executor.runUntilIdle();
    EXPECT_TRUE(isConnecting());
    EXPECT_FALSE(isOffered());
}

TEST_F(OrganizerFeatureTest, TheStatusIsSentBehindAFirstLookThatTookLonger) {
    calendars.hangs = true;
    const auto socket = startPaired();
    clock.advance(5s);
    executor.runUntilIdle();
    phone.logIn();
    executor.runUntilIdle();
    phone.exchangeHellos();
    executor.runUntilIdle();
    (void)phone.take();
    EXPECT_FALSE(isOffered());
    calendars.goOn();
    EXPECT_GE(takeStatuses().size(), 2U) << "behind the first look, and behind the refresh at the start";
    EXPECT_TRUE(isOffered());
}

TEST_F(OrganizerFeatureTest, AFirstLookInTimeLeavesNoTimer) {
    start();
    EXPECT_TRUE(isOffered());
    const auto waiting = clock.waiting();
    clock.advance(5s);
    EXPECT_EQ(clock.waiting(), waiting);
}

TEST_F(OrganizerFeatureTest, AChangeOfTheCalendarsIsSeenAndTold) {
    startSecured();
    calendars.has.clear();
    calendars.changed.tell();
    const auto statuses = takeStatuses();
    EXPECT_EQ(statuses.size(), 1U);
    EXPECT_FALSE(isOffered());
    calendars.has = {{"2", "Domov", "Doma", true}};
    calendars.changed.tell();
    EXPECT_FALSE(takeStatuses().empty());
    EXPECT_TRUE(isOffered());
}

TEST_F(OrganizerFeatureTest, ChangesDuringAReadAreReadOnceMore) {
    startSecured();
    calendars.hangs = true;
    calendars.changed.tell();
    executor.runUntilIdle();
    calendars.has.clear();
    const auto operations = calendars.operations;
    for (int i = 0; i < 10; ++i) calendars.changed.tell();
    calendars.goOn();
    EXPECT_EQ(takeStatuses().size(), 1U);
    EXPECT_EQ(calendars.operations, operations + 1);
    EXPECT_FALSE(isOffered());
}

TEST_F(OrganizerFeatureTest, EveryChoiceIsToldToThePhoneAndNoCalendarToolStandsInTheStatus) {
    startSecured();
    EXPECT_TRUE(ended(features->organizer.calendar().setCalendarEnabled("1", false)).has_value());
    EXPECT_FALSE(takeStatuses().empty());
    EXPECT_FALSE(isOffered());
    EXPECT_TRUE(ended(features->organizer.calendar().setCalendarEnabled("1", true)).has_value());
    const auto statuses = takeStatuses();
    ASSERT_FALSE(statuses.empty());
    EXPECT_TRUE(isOffered());
    for (const auto& tool : statuses.back().tools)
        for (const char* family : {"mac.calendar.", "mac.reminders.", "mac.contacts."})
            EXPECT_FALSE(tool.name.starts_with(family)) << tool.name;
}

TEST_F(OrganizerFeatureTest, ARefreshLooksAgain) {
    calendars.given = DataAccess::restricted;
    startSecured();
    EXPECT_FALSE(isOffered());
    calendars.givenWhenAsked = DataAccess::full;
    companion->obnovit();
    EXPECT_FALSE(takeStatuses().empty());
    EXPECT_TRUE(isOffered());
}

TEST_F(OrganizerFeatureTest, EachSwitchTakesItsTools) {
    startSecured();
    for (const auto& [integration, tool] : {std::pair(Integration::calendar, "mac.calendar.create"),
                                            std::pair(Integration::reminders, "mac.reminders.create"),
                                            std::pair(Integration::contacts, "mac.contacts.find")}) {
        EXPECT_TRUE(isOffered(tool));
        companion->integrations().turnOff(integration);
        EXPECT_FALSE(isOffered(tool));
    }
    EXPECT_FALSE(call("mac.contacts.find", R"({"query":"x"})").ok);
}

TEST_F(OrganizerFeatureTest, ThePhoneCallsTheTools) {
    calendars.held = {{"e", "Porada", dateFromSeconds(0), dateFromSeconds(60), false, "1", std::nullopt}};
    reminders.held = {{"r", "Mléko", false, "Nákup", std::nullopt}};
    contacts.found = {{"1", "Jan", "", "", {}, {"123"}}};
    startSecured();
    EXPECT_TRUE(
        call("mac.calendar.list", R"({"from":"1970-01-01","to":"1970-01-01"})").json.contains("Porada"));
    EXPECT_TRUE(call("mac.reminders.list", "{}").json.contains("Mléko"));
    EXPECT_EQ(call("mac.contacts.find", R"({"query":"jan"})").json,
              R"({"contacts":[{"id":"1","name":"Jan","emails":[],"phones":["123"]}]})");
}

TEST_F(OrganizerFeatureTest, AReminderKnowsThePlacesThatThePhoneHasNamed) {
    reminders.has = {{"l", "Nákup", true}};
    reminders.usual = "l";
    places.found = FoundPlace{"Brno", 49, 16};
    startSecured();
    CompanionPreferences preferences;
    preferences.places = std::vector<CompanionPlace>{{"Doma", "Lipová 3, Brno"}};
    EXPECT_TRUE(executor.run(features->voice.controller().applyPreferences(std::move(preferences))));
    EXPECT_TRUE(call("mac.reminders.create", R"({"title":"x","location":"DOMA"})").ok);
    EXPECT_EQ(places.asked, std::vector<std::string>{"Lipová 3, Brno"});
}

TEST_F(OrganizerFeatureTest, TheEndOfTheProgramDoesNotWaitForAServiceThatHangs) {
    startSecured();
    calendars.hangs = true;
    calendars.changed.tell();
    companion->obnovit();
    phone.call("mac.calendar.list", R"({"from":"1970-01-01","to":"1970-01-01"})", "r");
    executor.runUntilIdle();
    end();
    EXPECT_FALSE(companion);
}

} // namespace
} // namespace morvex
