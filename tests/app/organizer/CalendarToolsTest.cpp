#include "tests/app/organizer/CalendarToolsFixture.h"

namespace morvex {
namespace {

using Texts = std::vector<std::string>;

using CalendarToolsTest = CalendarToolsFixture;

TEST_F(CalendarToolsTest, AreOfferedWithTheSwitchFullAccessAndAnEnabledCalendar) {
    EXPECT_FALSE(isOffered()) << "not loaded yet";
    executor.run(calendar.refresh());
    const auto names = offered();
    EXPECT_EQ(Texts(names.begin(), names.begin() + 5),
              (Texts{"mac.calendar.calendars", "mac.calendar.list", "mac.calendar.create",
                     "mac.calendar.update", "mac.calendar.delete"}));
    isOn = false;
    EXPECT_FALSE(isOffered());
    isOn = true;
    for (const char* id : {"home", "work", "feast"}) {
        EXPECT_TRUE(isOffered());
        enable(id, false);
    }
    EXPECT_FALSE(isOffered()) << "no calendar is enabled";
    enable("feast", true);
    EXPECT_TRUE(isOffered());
    for (const auto access : {DataAccess::notDetermined, DataAccess::restricted, DataAccess::denied,
                              DataAccess::writeOnly, DataAccess::unknown}) {
        calendars.given = access;
        EXPECT_FALSE(isOffered());
    }
}

TEST_F(CalendarToolsTest, ListsTheEnabledCalendars) {
    EXPECT_EQ(call("mac.calendar.calendars", {}),
              R"({"calendars":[{"id":"home","name":"Domov","account":"Doma","writable":true},)"
              R"({"id":"feast","name":"Svátky","account":"Doma","writable":false},)"
              R"({"id":"work","name":"Práce","account":"Firma","writable":true}]})");
    EXPECT_TRUE(ok);
    enable("home", false);
    enable("work", false);
    EXPECT_EQ(call("mac.calendar.calendars", {}),
              R"({"calendars":[{"id":"feast","name":"Svátky","account":"Doma","writable":false}]})");
    enable("feast", false);
    EXPECT_EQ(call("mac.calendar.calendars", {}), R"({"calendars":[]})");
}

TEST_F(CalendarToolsTest, ListsEventsInLocalTimeSortedByTheirStart) {
    EXPECT_EQ(
        call("mac.calendar.list", range),
        R"({"events":[)"
        R"({"id":"e1","title":"Porada","local_start":"2026-03-14T10:00:00+01:00","local_end":"2026-03-14T11:00:00+01:00","all_day":false,"calendar":"Práce","location":"Zasedačka","time_zone":"Europe/Prague"},)"
        R"({"id":"e3","title":"Velikonoce","local_start":"2026-03-16T00:00:00+01:00","local_end":"2026-03-16T23:59:00+01:00","all_day":true,"calendar":"Svátky","location":"","time_zone":"Europe/Prague"},)"
        R"x({"id":"e2","title":"(bez názvu)","local_start":"2026-03-29T03:00:00+02:00","local_end":"2026-03-29T04:00:00+02:00","all_day":false,"calendar":"Domov","location":"","time_zone":"Europe/Prague"}]})x");
    ASSERT_EQ(calendars.ranges.size(), 1U);
    const auto& asked = calendars.ranges.front();
    EXPECT_EQ(asked.from, at(13, 23));
    EXPECT_EQ(asked.to, at(31, 22)) << "the whole last day, in summer time";
    EXPECT_EQ(asked.calendars, (Texts{"home", "feast", "work"}));
    EXPECT_EQ(asked.limit, 2000U);
}

TEST_F(CalendarToolsTest, TheZoneIsAskedAtEachCall) {
    EXPECT_TRUE(call("mac.calendar.list", range).contains("2026-03-14T10:00:00+01:00"));
    localTime.name = "UTC";
    const auto answer = call("mac.calendar.list", range);
    EXPECT_TRUE(answer.contains(R"("local_start":"2026-03-14T09:00:00Z")"));
    EXPECT_TRUE(answer.contains(R"("time_zone":"UTC")"));
    EXPECT_EQ(calendars.ranges.back().from, at(14, 0));
}

TEST_F(CalendarToolsTest, ARangeNeedsTwoDates) {
    for (const auto& arguments : std::vector<boost::json::object>{{},
                                                                  {{"from", "2026-03-14"}},
                                                                  {{"to", "2026-03-14"}},
                                                                  {{"from", "x"}, {"to", "2026-03-14"}},
                                                                  {{"from", "2026-03-14"}, {"to", ""}},
                                                                  {{"from", 1}, {"to", 2}}})
        EXPECT_EQ(call("mac.calendar.list", arguments), refusal("Chybí platné období kalendáře."));
    EXPECT_FALSE(ok);
    EXPECT_EQ(calendars.operations, 0);
    calendars.given = DataAccess::denied;
    EXPECT_EQ(call("mac.calendar.list", {}), refusal("Chybí platné období kalendáře."))
        << "before the access";
}

TEST_F(CalendarToolsTest, ARangeThatEndsBeforeItStartsIsEmpty) {
    EXPECT_EQ(call("mac.calendar.list", {{"from", "2026-03-15"}, {"to", "2026-03-13"}}), R"({"events":[]})");
    EXPECT_TRUE(ok);
    EXPECT_TRUE(calendars.ranges.empty());
    EXPECT_TRUE(call("mac.calendar.list", {{"from", "2026-03-14"}, {"to", "2026-03-14"}}).contains("e1"));
    calendars.given = DataAccess::denied;
    EXPECT_EQ(call("mac.calendar.list", {{"from", "2026-03-15"}, {"to", "2026-03-13"}}), refusal(noAccess));
}

TEST_F(CalendarToolsTest, ARangeHasAtMostFourYears) {
    call("mac.calendar.list", {{"from", "2024-01-01T00:00:00Z"}, {"to", "9999-12-31"}});
    EXPECT_EQ(formatDate(calendars.ranges.back().to), "2028-01-01T00:00:00Z");
    call("mac.calendar.list", {{"from", "2024-01-01T00:00:00Z"}, {"to", "2027-12-31T00:00:00Z"}});
    EXPECT_EQ(formatDate(calendars.ranges.back().to), "2027-12-31T00:00:00Z");
}

TEST_F(CalendarToolsTest, AtMostTwoThousandEventsAreListed) {
    calendars.held.assign(2001, {"e", "x", at(14, 9), at(14, 10), false, "work", std::nullopt});
    const auto answer = parseJson(call("mac.calendar.list", range)).value();
    EXPECT_EQ(answer.as_object().at("events").as_array().size(), 2000U);
}

TEST_F(CalendarToolsTest, EventsOfDisabledCalendarsAreNotListed) {
    call("mac.calendar.calendars", {});
    enable("work", false);
    EXPECT_FALSE(call("mac.calendar.list", range).contains("Porada")) << "though the store told it";
    EXPECT_EQ(calendars.ranges.back().calendars, (Texts{"home", "feast"}));
    enable("home", false);
    enable("feast", false);
    calendars.ranges.clear();
    EXPECT_EQ(call("mac.calendar.list", range), R"({"events":[]})");
    EXPECT_TRUE(calendars.ranges.empty()) << "no calendars must not mean all of them";
}

TEST_F(CalendarToolsTest, ACalendarThatIsDisabledDuringTheReadIsLeftOut) {
    executor.run(calendar.refresh());
    std::optional<ToolOutcome> outcome;
    executor.start(store(run("mac.calendar.list", range), &outcome));
    calendars.hangs = true;
    executor.runUntilIdle();
    enable("work", false);
    calendars.goOn();
    executor.runUntilIdle();
    ASSERT_TRUE(outcome);
    EXPECT_FALSE(encode(outcome->result).contains("Porada"));
}

TEST_F(CalendarToolsTest, CreatesAnEvent) {
    auto arguments = lunch;
    arguments["location"] = "Lípa";
    EXPECT_EQ(call("mac.calendar.create", arguments), R"({"created":true,"id":"new","calendar":"Domov"})");
    ASSERT_EQ(calendars.created.size(), 1U);
    const auto& event = calendars.created.front();
    EXPECT_EQ(event.title, "Oběd");
    EXPECT_EQ(event.start, at(14, 11));
    EXPECT_EQ(event.end, at(14, 12));
    EXPECT_EQ(event.location, "Lípa");
    EXPECT_EQ(event.calendar, "home");
    call("mac.calendar.create", lunch);
    EXPECT_EQ(calendars.created.back().location, std::nullopt) << "one that is absent stays unset";
}

TEST_F(CalendarToolsTest, AnEventNeedsATitleAndTimesInTheirOrder) {
    struct Row {
        const char* title;
        const char* start;
        const char* end;
        bool isGood;
    };

    for (const auto& row : {
             Row{"", "2026-03-14", "2026-03-15", false},
             Row{"x", "", "2026-03-15", false},
             Row{"x", "2026-03-14", "zítra", false},
             Row{"x", "2026-03-14", "2026-03-14", false},
             Row{"x", "2026-03-14T10:00:00Z", "2026-03-14T10:00:00Z", false},
             Row{"x", "2026-03-14T10:00:00Z", "2026-03-14T09:59:59Z", false},
             Row{"x", "2026-03-14T10:00:00", "2026-03-14T11:00:00", false},
             Row{" ", "2026-03-14", "2026-03-15", true},
             Row{"x", "2026-03-14T10:00:00Z", "2026-03-14T10:00:01Z", true},
         }) {
        const auto answer =
            call("mac.calendar.create", {{"title", row.title}, {"start", row.start}, {"end", row.end}});
        EXPECT_EQ(ok, row.isGood) << row.start << row.end;
        if (!row.isGood) {
            EXPECT_EQ(answer, refusal("Chybí název nebo platný čas události."));
        }
    }
    EXPECT_EQ(call("mac.calendar.create", {{"title", 1}}), refusal("Chybí název nebo platný čas události."));
}

TEST_F(CalendarToolsTest, ANamedCalendarIsComparedWithoutCaseAndDiacritics) {
    EXPECT_EQ(call("mac.calendar.create", lunchIn("PRACE")),
              R"({"created":true,"id":"new","calendar":"Práce"})");
    EXPECT_EQ(calendars.created.back().calendar, "work");
}

TEST_F(CalendarToolsTest, ANameWithoutAMatchIsNoWritableCalendarUnlikeForReminders) {
    for (const char* name : {"Škola", "Prá", " ", "Svátky"})
        EXPECT_EQ(call("mac.calendar.create", lunchIn(name)),
                  refusal("Na Macu není kalendář, do kterého lze zapisovat."))
            << name;
    EXPECT_TRUE(calendars.created.empty());
    call("mac.calendar.create", lunchIn(""));
    EXPECT_TRUE(ok) << "an empty name counts as none";
    enable("work", false);
    call("mac.calendar.create", lunchIn("Práce"));
    EXPECT_FALSE(ok) << "it is not enabled";
}

TEST_F(CalendarToolsTest, WithoutANameTheChosenCalendarComesFirstThenTheUsualOne) {
    calendars.usual = "work";
    call("mac.calendar.create", lunch);
    EXPECT_EQ(calendars.created.back().calendar, "work") << "the usual one";
    EXPECT_TRUE(executor.run(calendar.setWriteCalendar("home")).value().has_value());
    call("mac.calendar.create", lunch);
    EXPECT_EQ(calendars.created.back().calendar, "home") << "the chosen one";
    for (auto& each : calendars.has)
        if (each.id == "home") each.writable = false;
    call("mac.calendar.create", lunch);
    EXPECT_EQ(calendars.created.back().calendar, "work") << "the chosen one cannot be written to any more";
    calendars.usual = "feast";
    calendars.has.push_back({"a", "A", "Zzz", true});
    call("mac.calendar.create", lunch);
    EXPECT_EQ(calendars.created.back().calendar, "work") << "the first one";
    enable("work", false);
    calendars.usual = "work";
    call("mac.calendar.create", lunch);
    EXPECT_EQ(calendars.created.back().calendar, "a") << "the usual one is not enabled";
}

TEST_F(CalendarToolsTest, WithoutAWritableCalendarNothingIsCreated) {
    calendars.has = {{"feast", "Svátky", "Doma", false}};
    EXPECT_EQ(call("mac.calendar.create", lunch),
              refusal("Na Macu není kalendář, do kterého lze zapisovat."));
    calendars.has.clear();
    EXPECT_EQ(call("mac.calendar.create", lunch),
              refusal("Na Macu není kalendář, do kterého lze zapisovat."));
}

TEST_F(CalendarToolsTest, AnUpdateChangesOnlyWhatIsGiven) {
    EXPECT_EQ(call("mac.calendar.update", {{"id", "e1"}, {"title", "Schůze"}}),
              R"({"updated":true,"title":"Schůze"})");
    EXPECT_EQ(calendars.updated.back().first, "e1");
    EXPECT_EQ(calendars.updated.back().second.title, "Schůze");
    EXPECT_EQ(calendars.updated.back().second.start, std::nullopt);
    EXPECT_EQ(calendars.updated.back().second.end, std::nullopt);
    EXPECT_EQ(calendars.updated.back().second.location, std::nullopt);
    EXPECT_EQ(call("mac.calendar.update",
                   {{"id", "e1"}, {"start", "zítra"}, {"end", "2026-03-14T11:00:00Z"}, {"location", ""}}),
              R"({"updated":true,"title":"Porada"})");
    const auto& change = calendars.updated.back().second;
    EXPECT_EQ(change.title, std::nullopt);
    EXPECT_EQ(change.start, std::nullopt) << "a date that does not parse counts as absent";
    EXPECT_EQ(change.end, at(14, 11));
    EXPECT_EQ(change.location, "");
    EXPECT_EQ(call("mac.calendar.update", {{"id", "e2"}}), R"({"updated":true,"title":""})");
}

TEST_F(CalendarToolsTest, AnUpdateThatWouldEndBeforeItStartsChangesNothing) {
    for (const auto& times : std::vector<boost::json::object>{
             {{"start", "2026-03-14T10:00:01Z"}},
             {{"end", "2026-03-14T08:59:59Z"}},
             {{"start", "2026-04-14"}, {"end", "2026-04-13"}},
         }) {
        auto arguments = times;
        arguments["id"] = "e1";
        EXPECT_EQ(call("mac.calendar.update", arguments), refusal("Chybí název nebo platný čas události."));
    }
    EXPECT_TRUE(calendars.updated.empty());
    call("mac.calendar.update", {{"id", "e1"}, {"start", "2026-03-14T10:00:00Z"}});
    EXPECT_TRUE(ok) << "it may end when it starts";
    call("mac.calendar.update",
         {{"id", "e1"}, {"start", "2026-04-14T10:00:00Z"}, {"end", "2026-04-14T11:00:00Z"}});
    EXPECT_TRUE(ok);
}

TEST_F(CalendarToolsTest, DeletesAnEventAndTellsItsTitle) {
    EXPECT_EQ(call("mac.calendar.delete", {{"id", "e1"}}), R"({"deleted":true,"title":"Porada"})");
    EXPECT_EQ(call("mac.calendar.delete", {{"id", "e2"}}), R"({"deleted":true,"title":""})");
    EXPECT_EQ(calendars.removed, (Texts{"e1", "e2"}));
}

TEST_F(CalendarToolsTest, AChangeLooksForTheEventThenAtTheChoiceThenAtTheRights) {
    for (const char* tool : {"mac.calendar.update", "mac.calendar.delete"}) {
        EXPECT_EQ(call(tool, {}), refusal("Chybí identifikátor události."));
        EXPECT_EQ(call(tool, {{"id", 1}}), refusal("Chybí identifikátor události."));
        EXPECT_EQ(call(tool, {{"id", ""}}), refusal("Událost už v kalendáři nemohu najít."))
            << "present is not the same as not empty";
        EXPECT_EQ(call(tool, {{"id", "x"}}), refusal("Událost už v kalendáři nemohu najít."));
        EXPECT_EQ(call(tool, {{"id", "e3"}}), refusal("Vybraný kalendář je pouze pro čtení."));
        enable("feast", false);
        EXPECT_EQ(call(tool, {{"id", "e3"}}), refusal("Tento kalendář není v Morvex povolený."));
        enable("feast", true);
        calendars.given = DataAccess::denied;
        EXPECT_EQ(call(tool, {{"id", "x"}}), refusal(noAccess));
        EXPECT_EQ(call(tool, {}), refusal("Chybí identifikátor události."));
        calendars.given = DataAccess::full;
    }
    EXPECT_TRUE(calendars.updated.empty());
    EXPECT_TRUE(calendars.removed.empty());
}

TEST_F(CalendarToolsTest, AnEventOfACalendarThatIsGoneIsNotChanged) {
    calendars.held.front().calendar = "gone";
    EXPECT_EQ(call("mac.calendar.delete", {{"id", "e2"}}), refusal("Tento kalendář není v Morvex povolený."));
}

TEST_F(CalendarToolsTest, AnEventThatGoesMeanwhileIsNotFound) {
    calendars.isThereToChange = false;
    for (const char* tool : {"mac.calendar.update", "mac.calendar.delete"})
        EXPECT_EQ(call(tool, {{"id", "e1"}}), refusal("Událost už v kalendáři nemohu najít."));
}

} // namespace
} // namespace morvex
