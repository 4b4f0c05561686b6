#include "foundation/TimeZone.h"

#include <gtest/gtest.h>

#include <string>

namespace morvex {
namespace {

using namespace std::chrono_literals;
using std::chrono::year_month_day;

Date utc(const std::string& text) {
    return parseWireDate(text).value();
}

TimeZone zone(const std::string& name) {
    return TimeZone::named(name).value();
}

year_month_day day(int year, unsigned month, unsigned number) {
    return {std::chrono::year(year), std::chrono::month(month), std::chrono::day(number)};
}

TEST(TimeZoneTest, IsFoundByItsName) {
    for (const auto* name : {"Europe/Prague", "UTC", "Asia/Kathmandu", "America/Argentina/Ushuaia"})
        EXPECT_EQ(zone(name).name(), name);
    for (const auto* name :
         {"", "Europe/Nowhere", "Europe", "CESTX", "../../etc/passwd", "GMT+", "Etc/Unknown"})
        EXPECT_FALSE(TimeZone::named(name)) << name;
    EXPECT_FALSE(TimeZone::named(std::string(100'000, 'a')));
}

TEST(TimeZoneTest, KnowsHowFarItsClocksAreFromUtc) {
    struct Row {
        const char* zone;
        const char* at;
        std::chrono::seconds offset;
    };

    for (const auto& row : {
             Row{"UTC", "2026-07-01T00:00:00Z", 0s},
             Row{"Europe/Prague", "2026-01-15T12:00:00Z", 1h},
             Row{"Europe/Prague", "2026-07-15T12:00:00Z", 2h},
             Row{"Europe/Prague", "2026-03-29T00:59:59Z", 1h},
             Row{"Europe/Prague", "2026-03-29T01:00:00Z", 2h},
             Row{"America/St_Johns", "2026-01-15T12:00:00Z", -3h - 30min},
             Row{"Asia/Kathmandu", "2026-01-15T12:00:00Z", 5h + 45min},
             Row{"Australia/Lord_Howe", "2026-01-15T12:00:00Z", 11h},
             Row{"Australia/Lord_Howe", "2026-07-15T12:00:00Z", 10h + 30min},
             Row{"Pacific/Kiritimati", "2026-01-15T12:00:00Z", 14h},
         })
        EXPECT_EQ(zone(row.zone).offset(utc(row.at)), row.offset) << row.zone << " " << row.at;
}

TEST(TimeZoneTest, ShowsADayAndATime) {
    const auto prague = zone("Europe/Prague");
    EXPECT_EQ(prague.wallTime(utc("2025-12-31T23:30:15Z")), (WallTime{day(2026, 1, 1), 30min + 15s}));
    EXPECT_EQ(zone("America/New_York").wallTime(utc("2024-03-01T03:00:00Z")),
              (WallTime{day(2024, 2, 29), 22h}));
    EXPECT_EQ(prague.wallTime(utc("1969-12-31T22:59:59Z") + 999ms),
              (WallTime{day(1969, 12, 31), 23h + 59min + 59s}))
        << "a part of a second before 1970 belongs to the second that it began in";
}

TEST(TimeZoneTest, FindsTheMomentOfWhatIsShown) {
    struct Row {
        const char* zone;
        WallTime shown;
        const char* moment;
        const char* why;
    };

    for (const auto& row : {
             Row{"Europe/Prague", {day(2026, 7, 1), 9h}, "2026-07-01T07:00:00Z", "summer"},
             Row{"Europe/Prague", {day(2026, 3, 29), 2h + 30min}, "2026-03-29T01:30:00Z", "skipped: 3:30"},
             Row{"Europe/Prague",
                 {day(2026, 10, 25), 2h + 30min},
                 "2026-10-25T00:30:00Z",
                 "twice: the earlier"},
             Row{"Australia/Lord_Howe",
                 {day(2026, 10, 4), 2h + 15min},
                 "2026-10-03T15:45:00Z",
                 "half an hour skipped"},
             Row{"Asia/Kathmandu", {day(2026, 2, 28), 0s}, "2026-02-27T18:15:00Z", "no round hour"},
         })
        EXPECT_EQ(formatDate(zone(row.zone).moment(row.shown).value()), row.moment) << row.why;
    EXPECT_FALSE(zone("UTC").moment({day(2026, 2, 29), 0s})) << "no such day";
    EXPECT_FALSE(zone("UTC").moment({day(2026, 13, 1), 0s}));
    EXPECT_TRUE(zone("UTC").moment({day(2024, 2, 29), 0s}));
}

TEST(TimeZoneTest, FindsTheBeginningOfADay) {
    struct Row {
        const char* zone;
        const char* at;
        const char* start;
        const char* why;
    };

    for (const auto& row : {
             Row{"Europe/Prague", "2026-07-01T12:00:00Z", "2026-06-30T22:00:00Z", "midnight"},
             Row{"Europe/Prague", "2026-06-30T22:00:00Z", "2026-06-30T22:00:00Z", "midnight itself"},
             Row{"Europe/Prague", "2026-06-30T21:59:59Z", "2026-06-29T22:00:00Z", "the second before"},
             Row{"Europe/Prague", "2026-03-29T12:00:00Z", "2026-03-28T23:00:00Z", "a day of 23 hours"},
             Row{"Europe/Prague", "2026-10-25T12:00:00Z", "2026-10-24T22:00:00Z", "a day of 25 hours"},
             Row{"America/Sao_Paulo", "2018-11-04T12:00:00Z", "2018-11-04T03:00:00Z", "begins at 1:00"},
             Row{"America/Havana", "2026-11-01T12:00:00Z", "2026-11-01T04:00:00Z", "midnight comes twice"},
             Row{"Pacific/Apia", "2011-12-31T00:00:00Z", "2011-12-30T10:00:00Z",
                 "the day before was skipped"},
         })
        EXPECT_EQ(formatDate(zone(row.zone).startOfDay(utc(row.at))), row.start)
            << row.zone << ": " << row.why;
}

} // namespace
} // namespace morvex
