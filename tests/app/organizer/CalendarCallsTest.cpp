#include "shared/base/FrameLimit.h"
#include "tests/app/organizer/CalendarToolsFixture.h"

namespace morvex {
namespace {

using namespace std::chrono_literals;

using CalendarCallsTest = CalendarToolsFixture;

TEST_F(CalendarCallsTest, AnythingButFullAccessIsNone) {
    for (const auto access : {DataAccess::denied, DataAccess::writeOnly, DataAccess::unknown}) {
        calendars.given = access;
        EXPECT_EQ(call("mac.calendar.calendars", {}), refusal(noAccess));
        EXPECT_EQ(call("mac.calendar.list", range), refusal(noAccess));
        EXPECT_EQ(call("mac.calendar.create", lunch), refusal(noAccess)) << "also where it may be written to";
    }
    EXPECT_EQ(calendars.requests, 0);
    EXPECT_EQ(calendars.operations, 0);
}

TEST_F(CalendarCallsTest, ACallAsksForAccessWhereThatIsOpen) {
    for (const auto access : {DataAccess::notDetermined, DataAccess::restricted}) {
        calendars.given = access;
        calendars.givenWhenAsked.reset();
        calendars.requestFailure = TextError("Není sběrnice.");
        EXPECT_EQ(call("mac.calendar.calendars", {}), refusal(noAccess));
        EXPECT_EQ(calendar.accessError(), Sentence("Není sběrnice."));
        calendars.requestFailure.reset();
        calendars.givenWhenAsked = DataAccess::full;
        call("mac.calendar.calendars", {});
        EXPECT_TRUE(ok);
        EXPECT_EQ(calendar.accessError(), std::nullopt);
    }
    EXPECT_EQ(calendars.requests, 4);
}

TEST_F(CalendarCallsTest, AFailureOfTheStoreKeepsItsWords) {
    calendars.failure = TextError("Server kalendáře neodpovídá.");
    for (const auto& [tool, arguments] : std::vector<std::pair<std::string, boost::json::object>>{
             {"mac.calendar.calendars", {}},
             {"mac.calendar.list", range},
             {"mac.calendar.create", lunch},
             {"mac.calendar.update", {{"id", "e1"}}},
             {"mac.calendar.delete", {{"id", "e1"}}},
         })
        EXPECT_EQ(call(tool, arguments), refusal("Server kalendáře neodpovídá."));
}

TEST_F(CalendarCallsTest, ACallHasFifteenSecondsInAll) {
    calendars.hangs = true;
    EXPECT_EQ(after(14s, "mac.calendar.list", range), R"({"error":"zrušeno"})") << "abandoned then";
    EXPECT_EQ(after(15s, "mac.calendar.list", range), refusal("Systémová služba neodpověděla včas."));
    calendars.given = DataAccess::restricted;
    calendars.requestHangs = true;
    EXPECT_EQ(after(15s, "mac.calendar.list", range), refusal("Systémová služba neodpověděla včas."));
    EXPECT_EQ(calendar.accessError(), Sentence("Systémová služba neodpověděla včas."));
    EXPECT_EQ(clock.waiting(), 0U);
}

TEST_F(CalendarCallsTest, TheTimeOfACallIsNotCountedAnewForEachQuestion) {
    std::optional<ToolOutcome> outcome;
    calendars.hangs = true;
    executor.start(store(run("mac.calendar.list", range), &outcome));
    executor.runUntilIdle();
    clock.advance(10s);
    calendars.goOn();
    calendars.hangs = true;
    executor.runUntilIdle();
    ASSERT_EQ(calendars.ranges.size(), 1U);
    clock.advance(5s);
    executor.runUntilIdle();
    ASSERT_TRUE(outcome);
    EXPECT_EQ(encode(outcome->result), refusal("Systémová služba neodpověděla včas."));
}

TEST_F(CalendarCallsTest, TheEndOfTheProgramEndsACall) {
    calendars.hangs = true;
    std::optional<ToolOutcome> outcome;
    executor.start(store(run("mac.calendar.calendars", {}), &outcome));
    executor.runUntilIdle();
    EXPECT_FALSE(outcome);
    ending.request_stop();
    executor.runUntilIdle();
    EXPECT_TRUE(outcome);
}

TEST_F(CalendarCallsTest, HostileTextsAreToldAsTheyStandAndStayReadable) {
    const std::string title = "a\"b\\\r\nBEGIN:VEVENT\x01\xff" + std::string(100'000, 'x');
    calendars.held = {{"e\n1", title, at(14, 9), at(14, 10), false, "work", std::string("\0<b>", 4)}};
    const auto answer = parseJson(call("mac.calendar.list", range));
    ASSERT_TRUE(answer.has_value()) << "invalid UTF-8 is repaired";
    const auto& event = answer->as_object().at("events").as_array().front().as_object();
    EXPECT_EQ(event.at("title").as_string().size(), title.size() + 2);
    EXPECT_EQ(event.at("location").as_string(), std::string_view("\0<b>", 4));
    EXPECT_EQ(event.at("id").as_string(), "e\n1");
    call("mac.calendar.update", {{"id", "e\n1"}, {"title", "x\r\nATTACH:file:///"}});
    EXPECT_EQ(calendars.updated.back().second.title, "x\r\nATTACH:file:///");
}

TEST_F(CalendarCallsTest, DatesOfAnyYearAreListed) {
    calendars.held = {{"e", "x", Date::min(), Date::max(), false, "work", std::nullopt}};
    EXPECT_TRUE(call("mac.calendar.list", range).contains(R"("local_start":"0000-)"));
}

TEST_F(CalendarCallsTest, AListThatIsTooLongToSendIsRefused) {
    const std::string title(frameLimit / 100, 'x');
    calendars.held.assign(101, {"e", title, at(14, 9), at(14, 10), false, "work", std::nullopt});
    EXPECT_EQ(call("mac.calendar.list", range), refusal("Výsledek je na přenos příliš dlouhý."));
    EXPECT_FALSE(ok);
}

} // namespace
} // namespace morvex
