#include "platform/linux/evolution/EvolutionCalendarStore.h"
#include "tests/platform/linux/evolution/EvolutionTest.h"

#include <algorithm>
#include <set>

namespace morvex {
namespace {

using Listed = std::vector<std::string>;

class EvolutionCalendarStoreTest : public EvolutionTest {
  protected:
    void SetUp() override {
        EvolutionTest::SetUp();
        store.emplace(*service);
    }

    ~EvolutionCalendarStoreTest() override { store.reset(); }

    std::vector<CalendarEvent> events(const std::string& from = "2026-03-20T00:00:00Z",
                                      const std::string& to = "2026-04-20T00:00:00Z",
                                      std::size_t limit = 2000) {
        auto found = run(store->events(at(from), at(to), {personal}, limit, {}));
        EXPECT_TRUE(found.has_value()) << found.error().popis();
        return found.value_or(std::vector<CalendarEvent>());
    }

    /// Titles and starts of what is listed.
    Listed listed(const std::string& from = "2026-03-20T00:00:00Z",
                  const std::string& to = "2026-04-20T00:00:00Z") {
        Listed texts;
        for (const auto& each : events(from, to))
            texts.push_back(each.title.value_or("-") + " " + formatDate(each.start));
        return texts;
    }

    CalendarEvent only() {
        const auto found = events();
        EXPECT_EQ(found.size(), 1U);
        return found.empty() ? CalendarEvent() : found.front();
    }

    CalendarEvent occurrence(const std::string& start) {
        for (const auto& each : events())
            if (each.start == at(start)) return each;
        ADD_FAILURE() << start << " is not listed";
        return {};
    }

    std::optional<EvolutionCalendarStore> store;
};

const std::string prague = ";TZID=Europe/Prague:";

TEST_F(EvolutionCalendarStoreTest, ListsTheCalendarsAndWhoMayWrite) {
    desktop->addSource("work", "Práce", "Calendar");
    ASSERT_TRUE(run(store->requestAccess({})).has_value());
    EXPECT_EQ(store->access(), DataAccess::full);
    const auto calendars = run(store->calendars({}));
    ASSERT_TRUE(calendars.has_value());
    std::map<std::string, bool> writable;
    for (const auto& each : *calendars) {
        writable[each.id] = each.writable;
        if (each.id == "work") EXPECT_EQ(each.name, "Práce");
        EXPECT_FALSE(each.account.empty());
    }
    EXPECT_EQ(writable,
              (std::map<std::string, bool>{{"birthdays", false}, {personal, true}, {"work", true}}));
    EXPECT_EQ(run(store->defaultCalendar({})).value(), personal);
}

TEST_F(EvolutionCalendarStoreTest, AnEventIsMadeChangedMovedAndRemoved) {
    const auto id = run(store->create(
        {"Schůzka", at("2026-03-28T10:00:00Z"), at("2026-03-28T11:00:00Z"), "Brno", personal}, {}));
    ASSERT_TRUE(id.has_value()) << id.error().popis();
    const CalendarEvent made{
        *id, "Schůzka", at("2026-03-28T10:00:00Z"), at("2026-03-28T11:00:00Z"), false, personal, "Brno"};
    EXPECT_EQ(only(), made);
    EXPECT_EQ(run(store->event(*id, {})).value(), made);
    EXPECT_THAT(stored(personal, EventId::parse(*id)->uid).front(),
                testing::HasSubstr("Europe/Prague:20260328T110000"));

    EXPECT_TRUE(
        run(store->update(
                *id, CalendarEventChange{"Jinak", at("2026-04-01T08:00:00Z"), at("2026-04-01T09:30:00Z"), {}},
                {}))
            .value());
    const CalendarEvent moved{
        *id, "Jinak", at("2026-04-01T08:00:00Z"), at("2026-04-01T09:30:00Z"), false, personal, "Brno"};
    EXPECT_EQ(only(), moved);
    EXPECT_TRUE(run(store->update(*id, CalendarEventChange{"", {}, {}, ""}, {})).value());
    EXPECT_EQ(only().title, std::nullopt);
    EXPECT_EQ(only().location, std::nullopt);

    EXPECT_TRUE(run(store->remove(*id, {})).value());
    EXPECT_TRUE(events().empty());
    EXPECT_FALSE(run(store->remove(*id, {})).value());
    EXPECT_FALSE(run(store->update(*id, CalendarEventChange{"x", {}, {}, {}}, {})).value());
    EXPECT_EQ(run(store->event(*id, {})).value(), std::nullopt);
}

TEST_F(EvolutionCalendarStoreTest, IdsThatNameNothingFindNothing) {
    put(personal, vevent("w", "DTSTART" + prague + "20260322T090000\r\nRRULE:FREQ=WEEKLY\r\n"));
    for (const std::string id : {"", "x", "::", "system-calendar:w:", "system-calendar:none:", "none:w:",
                                 "system-calendar:w:20260323T080000Z", "system-calendar:w:20260322",
                                 "system-calendar:w:x", "system-calendar:%00:", "system-task-list:w:"}) {
        EXPECT_EQ(run(store->event(id, {})).value(), std::nullopt) << id;
        EXPECT_FALSE(run(store->update(id, CalendarEventChange{"x", {}, {}, {}}, {})).value()) << id;
        EXPECT_FALSE(run(store->remove(id, {})).value()) << id;
    }
    EXPECT_EQ(listed("2026-03-20T00:00:00Z", "2026-03-30T00:00:00Z"),
              (Listed{"w 2026-03-22T08:00:00Z", "w 2026-03-29T07:00:00Z"}));
}

TEST_F(EvolutionCalendarStoreTest, OneOccurrenceIsMovedAndRemoved) {
    put(personal, vevent("w", "DTSTART" + prague + "20260322T090000\r\nDTEND" + prague +
                                  "20260322T100000\r\nRRULE:FREQ=WEEKLY;COUNT=4\r\n"));
    const auto third = occurrence("2026-04-05T07:00:00Z").id;
    ASSERT_TRUE(
        run(store->update(
                third,
                CalendarEventChange{"jinde", at("2026-04-06T09:00:00Z"), at("2026-04-06T10:00:00Z"), {}}, {}))
            .value());
    EXPECT_EQ(listed(), (Listed{"w 2026-03-22T08:00:00Z", "w 2026-03-29T07:00:00Z",
                                "jinde 2026-04-06T09:00:00Z", "w 2026-04-12T07:00:00Z"}));
    EXPECT_EQ(occurrence("2026-04-06T09:00:00Z").id, third);
    ASSERT_EQ(stored(personal, "w").size(), 2U);
    EXPECT_THAT(stored(personal, "w").back(), testing::Not(testing::HasSubstr("RRULE")));
    EXPECT_EQ(listed("2026-04-05T00:00:00Z", "2026-04-06T00:00:00Z"), Listed());

    ASSERT_TRUE(
        run(store->update(third,
                          CalendarEventChange{{}, at("2026-05-20T09:00:00Z"), at("2026-05-20T10:00:00Z"), {}},
                          {}))
            .value());
    EXPECT_EQ(listed("2026-05-20T00:00:00Z", "2026-05-21T00:00:00Z"), Listed{"jinde 2026-05-20T09:00:00Z"})
        << "beyond the series";

    ASSERT_TRUE(run(store->remove(third, {})).value());
    ASSERT_TRUE(run(store->remove(occurrence("2026-03-29T07:00:00Z").id, {})).value());
    EXPECT_EQ(listed(), (Listed{"w 2026-03-22T08:00:00Z", "w 2026-04-12T07:00:00Z"}));
    EXPECT_FALSE(run(store->remove(third, {})).value());
    EXPECT_THAT(stored(personal, "w").front(), testing::HasSubstr("EXDATE:20260405T070000Z"));
    EXPECT_THAT(stored(personal, "w").front(), testing::HasSubstr("RRULE"));
}

TEST_F(EvolutionCalendarStoreTest, AnAllDaySeriesStaysOne) {
    put(personal,
        vevent("d",
               "DTSTART;VALUE=DATE:20260322\r\nDTEND;VALUE=DATE:20260324\r\nRRULE:FREQ=WEEKLY;COUNT=4\r\n"));
    const auto second = occurrence("2026-03-28T23:00:00Z");
    EXPECT_TRUE(second.allDay);
    EXPECT_EQ(second.end, at("2026-03-30T21:59:59Z")) << "on the day of 23 hours and the next one";
    ASSERT_TRUE(
        run(store->update(second.id,
                          CalendarEventChange{{}, at("2026-03-31T10:00:00Z"), at("2026-03-31T22:00:00Z"), {}},
                          {}))
            .value());
    const auto moved = occurrence("2026-03-30T22:00:00Z");
    EXPECT_TRUE(moved.allDay);
    EXPECT_EQ(moved.end, at("2026-03-31T21:59:59Z"));
    EXPECT_EQ(moved.id, second.id);
    EXPECT_EQ(events().size(), 4U);
    ASSERT_TRUE(run(store->remove(occurrence("2026-04-04T22:00:00Z").id, {})).value());
    ASSERT_TRUE(run(store->remove(moved.id, {})).value());
    EXPECT_EQ(listed(), (Listed{"d 2026-03-21T23:00:00Z", "d 2026-04-11T22:00:00Z"}));
}

TEST_F(EvolutionCalendarStoreTest, TheLengthOfAnEventMayBeGivenInAnyWay) {
    put(personal, vevent("1", "DTSTART;VALUE=DATE:20260401\r\n"));
    put(personal, vevent("2", "DTSTART:20260402T100000Z\r\n"));
    put(personal, vevent("3", "DTSTART:20260403T100000Z\r\nDURATION:PT90M\r\n"));
    put(personal, vevent("4", "DTSTART:20260404T100000\r\nDTEND:20260404T110000\r\n"));
    put(personal, vevent("5", "DTSTART;TZID=America/New_York:20260405T100000\r\nDTEND;TZID=America/"
                              "New_York:20260405T110000\r\n"));
    std::vector<std::string> ends;
    for (const auto& each : events()) ends.push_back(formatDate(each.start) + " " + formatDate(each.end));
    EXPECT_EQ(
        ends,
        (Listed{"2026-03-31T22:00:00Z 2026-04-01T21:59:59Z", "2026-04-02T10:00:00Z 2026-04-02T10:00:00Z",
                "2026-04-03T10:00:00Z 2026-04-03T11:30:00Z", "2026-04-04T08:00:00Z 2026-04-04T09:00:00Z",
                "2026-04-05T14:00:00Z 2026-04-05T15:00:00Z"}));
    const auto third = occurrence("2026-04-03T10:00:00Z").id;
    ASSERT_TRUE(
        run(store->update(third, CalendarEventChange{{}, at("2026-04-03T09:00:00Z"), {}, {}}, {})).value());
    EXPECT_EQ(occurrence("2026-04-03T09:00:00Z").end, at("2026-04-03T11:30:00Z")) << "the end stays";
}

TEST_F(EvolutionCalendarStoreTest, AZoneThatTheCalendarDefinesIsUsed) {
    put(personal,
        vevent("z", "DTSTART;TZID=Vlastni:20260401T100000\r\nDTEND;TZID=Vlastni:20260401T110000\r\nRRULE:"
                    "FREQ=DAILY;COUNT=2\r\n"),
        SourceKind::events,
        "BEGIN:VTIMEZONE\r\nTZID:Vlastni\r\nBEGIN:STANDARD\r\nDTSTART:19700101T000000\r\nTZOFFSETFROM:+"
        "0500\r\nTZOFFSETTO:+0500\r\nEND:STANDARD\r\nEND:VTIMEZONE\r\n");
    EXPECT_EQ(listed(), (Listed{"z 2026-04-01T05:00:00Z", "z 2026-04-02T05:00:00Z"}));
}

TEST_F(EvolutionCalendarStoreTest, AnInvitationToOneDateOfASeriesIsListed) {
    put(personal, vevent("lone", "RECURRENCE-ID" + prague + "20260405T090000\r\nDTSTART" + prague +
                                     "20260405T100000\r\nDTEND" + prague + "20260405T110000\r\n"));
    const auto event = only();
    EXPECT_EQ(event.start, at("2026-04-05T08:00:00Z"));
    ASSERT_TRUE(run(store->update(event.id, CalendarEventChange{"jiný", {}, {}, {}}, {})).value());
    EXPECT_EQ(only().title, "jiný");
    ASSERT_TRUE(run(store->remove(event.id, {})).value());
    EXPECT_TRUE(events().empty());
}

TEST_F(EvolutionCalendarStoreTest, CancelledEventsAreLeftOut) {
    put(personal, vevent("c", "DTSTART:20260401T100000Z\r\nSTATUS:CANCELLED\r\n"));
    put(personal, vevent("t", "DTSTART:20260402T100000Z\r\nSTATUS:TENTATIVE\r\n"));
    EXPECT_EQ(listed(), Listed{"t 2026-04-02T10:00:00Z"});
}

TEST_F(EvolutionCalendarStoreTest, ASeriesBySecondsGivesTheFirstOnes) {
    put(personal, vevent("s", "DTSTART:20260101T000000Z\r\nRRULE:FREQ=SECONDLY\r\n"));
    put(personal, vevent("e", "DTSTART:20260321T000000Z\r\n"));
    const auto found = events("2026-03-20T00:00:00Z", "2030-03-20T00:00:00Z", 20);
    ASSERT_EQ(found.size(), 20U);
    EXPECT_EQ(found.back().start, at("2026-03-20T00:00:19Z"));
}

TEST_F(EvolutionCalendarStoreTest, ARuleWithAnEndlessSearchGivesItsFirstTimeAlone) {
    const std::vector<std::string> rules{"FREQ=SECONDLY;BYMONTH=2;BYMONTHDAY=30", "FREQ=HOURLY;BYHOUR=9",
                                         "FREQ=WEEKLY;BYMONTHDAY=30;BYMONTH=2", "FREQ=DAILY;BYYEARDAY=9"};
    for (std::size_t each = 0; each < rules.size(); ++each)
        put(personal,
            vevent("r" + std::to_string(each), "DTSTART:20260401T100000Z\r\nRRULE:" + rules[each] + "\r\n"));
    Listed expected;
    for (std::size_t each = 0; each < rules.size(); ++each)
        expected.push_back("r" + std::to_string(each) + " 2026-04-01T10:00:00Z");
    auto found = listed("2026-03-20T00:00:00Z", "2030-03-20T00:00:00Z");
    std::ranges::sort(found);
    EXPECT_EQ(found, expected);
}

TEST_F(EvolutionCalendarStoreTest, OfSeveralRulesFourCount) {
    std::string rules;
    for (const char* day : {"05", "06", "07", "08", "09"})
        rules += "RRULE:FREQ=MONTHLY;BYMONTHDAY=" + std::string(day) + ";COUNT=2\r\n";
    put(personal, vevent("m", "DTSTART:20260401T100000Z\r\n" + rules));
    EXPECT_EQ(listed("2026-03-31T00:00:00Z", "2026-04-12T00:00:00Z"),
              (Listed{"m 2026-04-01T10:00:00Z", "m 2026-04-05T10:00:00Z", "m 2026-04-06T10:00:00Z",
                      "m 2026-04-07T10:00:00Z", "m 2026-04-08T10:00:00Z"}));
}

/// Each of these rules never comes true, which costs the library a third of a second.
TEST_F(EvolutionCalendarStoreTest, ACalendarOfCostlySeriesTakesNoTimeFromTheOthers) {
    desktop->addSource("costly", "Drahý", "Calendar");
    const std::string never = "RRULE:FREQ=YEARLY;BYMONTH=2;BYMONTHDAY=30\r\n";
    for (int each = 0; each < 400; ++each)
        put("costly",
            vevent("c" + std::to_string(each), "DTSTART:20260401T100000Z\r\n" + never + never + never));
    put(personal, vevent("e", "DTSTART:20260402T100000Z\r\n"));
    const auto found = run(store->events(at("2026-03-20T00:00:00Z"), at("2026-04-20T00:00:00Z"),
                                         {"costly", personal}, 2000, {}));
    ASSERT_TRUE(found.has_value()) << found.error().popis();
    EXPECT_EQ(found->back().title, "e");
    EXPECT_LT(found->size(), 401U);
}

TEST_F(EvolutionCalendarStoreTest, ManyDatesOfExceptionAreTakenOutAtOnce) {
    std::string lines = "DTSTART:20260101T000000Z\r\nRRULE:FREQ=MINUTELY\r\n";
    for (int year = 1900; year < 2100; ++year)
        for (const char* month : {"01", "02", "03", "04", "05", "06", "07", "08", "09", "10", "11"})
            for (const char* day : {"01", "07", "14"})
                lines += "EXDATE;VALUE=DATE:" + std::to_string(year) + month + day + "\r\n";
    put(personal, vevent("m", lines));
    const auto found = events("2026-03-31T23:58:00Z", "2026-04-02T00:02:00Z");
    ASSERT_EQ(found.size(), 4U);
    EXPECT_EQ(found[1].start, at("2026-03-31T23:59:00Z"));
    EXPECT_EQ(found[2].start, at("2026-04-02T00:00:00Z"));
}

TEST_F(EvolutionCalendarStoreTest, HostileTextsStayTexts) {
    const std::string injected = "a\r\nDTSTART:20200101T000000Z\r\nEND:VEVENT\r\nBEGIN:VEVENT;,\\n\"";
    const std::string controls = std::string("b\0c", 3) + "\x1b[2J\x7f";
    std::string giant;
    for (int each = 0; each < 50'000; ++each) giant += "ář";
    Listed titles;
    for (const auto& title : {injected, controls, giant}) {
        const auto id = run(store->create(
            {title, at("2026-03-28T10:00:00Z"), at("2026-03-28T11:00:00Z"), title, personal}, {}));
        ASSERT_TRUE(id.has_value()) << id.error().popis();
        const auto event = run(store->event(*id, {})).value();
        ASSERT_TRUE(event.has_value());
        EXPECT_EQ(event->start, at("2026-03-28T10:00:00Z"));
        EXPECT_EQ(event->location, event->title);
        titles.push_back(event->title.value_or(""));
    }
    EXPECT_EQ(titles,
              (Listed{"a\nDTSTART:20200101T000000Z\nEND:VEVENT\nBEGIN:VEVENT;,\\n\"", "bc[2J", giant}));
    EXPECT_EQ(events().size(), 3U);
}

TEST_F(EvolutionCalendarStoreTest, ACalendarThatCannotBeWrittenFailsInItsOwnWords) {
    const auto made = run(
        store->create({"x", at("2026-03-28T10:00:00Z"), at("2026-03-28T11:00:00Z"), {}, "birthdays"}, {}));
    ASSERT_FALSE(made.has_value());
    EXPECT_FALSE(made.error().popis().empty());
    EXPECT_FALSE(
        run(store->create({"x", at("2026-03-28T10:00:00Z"), at("2026-03-28T11:00:00Z"), {}, "none"}, {}))
            .has_value());
}

/// Series of every kind are listed as the service's own expansion has them.
TEST_F(EvolutionCalendarStoreTest, SeriesAreExpandedAsTheDesktopDoes) {
    const std::string zoned =
        "DTSTART" + prague + "20260322T023000\r\nDTEND" + prague + "20260322T033000\r\n";
    const std::string day = "DTSTART;VALUE=DATE:20260322\r\nDTEND;VALUE=DATE:20260323\r\n";
    const std::vector<std::string> kinds{
        zoned + "RRULE:FREQ=DAILY\r\n",
        zoned + "RRULE:FREQ=DAILY;COUNT=9\r\n",
        zoned + "RRULE:FREQ=WEEKLY;BYDAY=MO,WE;UNTIL=20260408T080000Z\r\n",
        zoned + "RRULE:FREQ=MONTHLY;BYDAY=-1SU\r\n",
        zoned + "RRULE:FREQ=MONTHLY;BYMONTHDAY=22\r\n",
        zoned + "RRULE:FREQ=YEARLY;INTERVAL=2\r\n",
        zoned + "RRULE:FREQ=DAILY\r\nEXDATE" + prague +
            "20260325T023000,20260326T023000\r\nEXDATE:20260327T013000Z\r\n",
        zoned + "RDATE" + prague + "20260401T120000\r\nRDATE:20260402T120000Z\r\n",
        zoned + "RRULE:FREQ=DAILY\r\nEXRULE:FREQ=DAILY;INTERVAL=2\r\n",
        day + "RRULE:FREQ=DAILY;INTERVAL=3\r\n",
        day + "RRULE:FREQ=WEEKLY\r\nEXDATE;VALUE=DATE:20260329\r\n",
        day + "RDATE;VALUE=DATE:20260401\r\n",
        "DTSTART:20260322T090000\r\nDTEND:20260322T100000\r\nRRULE:FREQ=DAILY;COUNT=12\r\n",
        "DTSTART;TZID=America/New_York:20250322T220000\r\nDTEND;TZID=America/"
        "New_York:20250323T010000\r\nRRULE:FREQ=WEEKLY\r\n",
        "DTSTART:20260322T090000Z\r\nDTEND:20260322T100000Z\r\nRRULE:FREQ=HOURLY;INTERVAL=7\r\n"};
    for (std::size_t each = 0; each < kinds.size(); ++each)
        put(personal, vevent("k" + std::to_string(each), kinds[each]));
    std::map<std::string, Listed> ours;
    for (const auto& each : events())
        ours[each.title.value_or("")].push_back(
            formatDate(each.start) + " " + formatDate(each.end + std::chrono::seconds(each.allDay ? 1 : 0)));
    for (std::size_t each = 0; each < kinds.size(); ++each) {
        const auto uid = "k" + std::to_string(each);
        auto theirs = run(service->run({}, [uid](EvolutionDesktop& there, const TimeZone& local,
                                                 GCancellable* cancellable) {
            return there.with<Listed>(
                SourceKind::events, personal, cancellable,
                [&](EClient* client, GLibError& error) -> Result<Listed> {
                    auto* calendar = E_CAL_CLIENT(client);
                    e_cal_client_set_default_timezone(calendar,
                                                      i_cal_timezone_get_builtin_timezone("Europe/Prague"));
                    const auto series = CalendarCall{calendar, local, cancellable, error}.series(uid);
                    struct Out {
                        Listed found;
                        ICalTimezone* local;
                    } out{{}, i_cal_timezone_get_builtin_timezone("Europe/Prague")};
                    e_cal_client_generate_instances_for_object_sync(
                        calendar, series->master(), wholeSeconds(at("2026-03-20T00:00:00Z")),
                        wholeSeconds(at("2026-04-20T00:00:00Z")), cancellable,
                        [](ICalComponent*, ICalTime* start, ICalTime* end, gpointer data, GCancellable*,
                           GError**) -> gboolean {
                            auto& to = *static_cast<Out*>(data);
                            const auto moment = [&](ICalTime* time) {
                                auto* zone = i_cal_time_get_timezone(time);
                                const bool isLocal =
                                    i_cal_time_is_date(time) || (!zone && !i_cal_time_is_utc(time));
                                return formatDate(dateFromSeconds(
                                    i_cal_time_as_timet_with_zone(time, isLocal ? to.local : zone)));
                            };
                            to.found.push_back(moment(start) + " " + moment(end));
                            return TRUE;
                        },
                        &out);
                    return out.found;
                });
        }));
        ASSERT_TRUE(theirs.has_value());
        EXPECT_FALSE(theirs->empty()) << kinds[each];
        EXPECT_EQ(ours[uid], *theirs) << kinds[each];
    }
}

} // namespace
} // namespace morvex
