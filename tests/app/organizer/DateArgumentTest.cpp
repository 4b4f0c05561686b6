#include "app/organizer/DateArgument.h"

#include <gtest/gtest.h>

#include <string>

namespace morvex {
namespace {

const TimeZone prague = TimeZone::named("Europe/Prague").value();

/// The moment in UTC, with its microseconds if it has any; "-" for none.
std::string read(std::string_view text, BareDay bareDay = BareDay::itsStart, const TimeZone& zone = prague) {
    const auto date = parseDate(text, bareDay, zone);
    if (!date) return "-";
    const auto left = date->time_since_epoch() % std::chrono::seconds(1);
    return formatDate(*date) + (left.count() == 0 ? "" : " " + std::to_string(left.count()));
}

TEST(ParseDate, ReadsAMomentWithItsOffset) {
    struct Row {
        const char* text;
        const char* moment;
    };

    for (const auto& row : {
             Row{"2026-03-14T10:00:00Z", "2026-03-14T10:00:00Z"},
             Row{"2026-03-14T10:00:00+02:00", "2026-03-14T08:00:00Z"},
             Row{"2026-03-14T10:00:00-05:30", "2026-03-14T15:30:00Z"},
             Row{"2026-03-14T00:30:00+01:00", "2026-03-13T23:30:00Z"},
             Row{"2026-03-14T10:00:00-00:00", "2026-03-14T10:00:00Z"},
             Row{"2026-03-14T10:00:00+23:59", "2026-03-13T10:01:00Z"},
             Row{"2024-02-29T23:59:59Z", "2024-02-29T23:59:59Z"},
             Row{"2026-03-14T10:00:00.5Z", "2026-03-14T10:00:00Z 500000"},
             Row{"2026-03-14T10:00:00.123+02:00", "2026-03-14T08:00:00Z 123000"},
             Row{"2026-03-14T10:00:00.123456789Z", "2026-03-14T10:00:00Z 123456"},
             Row{"0000-01-01T00:00:00Z", "0000-01-01T00:00:00Z"},
             Row{"9999-12-31T23:59:59Z", "9999-12-31T23:59:59Z"},
         })
        for (const auto bareDay : {BareDay::itsStart, BareDay::itsEnd})
            EXPECT_EQ(read(row.text, bareDay), row.moment) << row.text;
}

TEST(ParseDate, ReadsNothingElse) {
    for (const char* text : {
             "",
             " ",
             "zítra",
             "2026",
             "2026-03",
             "2026-3-14",
             "26-03-14",
             "2026-03-14 ",
             " 2026-03-14",
             "2026-03-14\n",
             "2026/03/14",
             "20260314",
             "02026-03-14",
             "-2026-03-14",
             "+2026-03-14",
             "2026-00-14",
             "2026-13-14",
             "2026-03-00",
             "2026-03-32",
             "2026-02-29",
             "1900-02-29",
             "2026-03-14T",
             "2026-03-14Z",
             "2026-03-14T10:00",
             "2026-03-14T10:00Z",
             "2026-03-14T10:00:00",
             "2026-03-14 10:00:00Z",
             "2026-03-14t10:00:00Z",
             "2026-03-14T10:00:00z",
             "2026-03-14T10:00:00 Z",
             "2026-03-14T10:00:00ZZ",
             "2026-03-14T10:00:00Z ",
             "2026-03-14T24:00:00Z",
             "2026-03-14T10:60:00Z",
             "2026-03-14T10:00:60Z",
             "2026-03-14T1:00:00Z",
             "2026-03-14T10:00:00+0200",
             "2026-03-14T10:00:00+02",
             "2026-03-14T10:00:00+24:00",
             "2026-03-14T10:00:00+02:60",
             "2026-03-14T10:00:00+02:00Z",
             "2026-03-14T10:00:00.Z",
             "2026-03-14T10:00:00,5Z",
             "2026-03-14T10:00:00.5",
             "2026-03-14T10:00:00.1234567890Z",
             "2026-02-30T10:00:00Z",
             "0000-01-01T00:00:00+00:01",
             "9999-12-31T23:59:59-00:01",
             "٢٠٢٦-٠٣-١٤",
         })
        for (const auto bareDay : {BareDay::itsStart, BareDay::itsEnd})
            EXPECT_EQ(read(text, bareDay), "-") << text;
    EXPECT_EQ(read(std::string_view("2026-03-14\0", 11)), "-");
    EXPECT_EQ(read(std::string(100'000, '1')), "-");
    EXPECT_EQ(read("2026-03-14T10:00:00." + std::string(100'000, '1') + "Z"), "-");
}

TEST(ParseDate, ABareDayBeginsAtTheLocalMidnight) {
    EXPECT_EQ(read("2026-03-14"), "2026-03-13T23:00:00Z");
    EXPECT_EQ(read("2026-07-14"), "2026-07-13T22:00:00Z");
}

TEST(ParseDate, ABareDayAsTheEndOfARangeEndsAtTheNextLocalMidnight) {
    EXPECT_EQ(read("2026-03-14", BareDay::itsEnd), "2026-03-14T23:00:00Z");
    EXPECT_EQ(read("2026-12-31", BareDay::itsEnd), "2026-12-31T23:00:00Z");
    EXPECT_EQ(read("2024-02-28", BareDay::itsEnd), "2024-02-28T23:00:00Z");
}

TEST(ParseDate, ADayOfTwentyThreeOrTwentyFiveHoursEndsWithItself) {
    EXPECT_EQ(read("2026-03-29"), "2026-03-28T23:00:00Z");
    EXPECT_EQ(read("2026-03-29", BareDay::itsEnd), "2026-03-29T22:00:00Z") << "23 hours";
    EXPECT_EQ(read("2026-10-25"), "2026-10-24T22:00:00Z");
    EXPECT_EQ(read("2026-10-25", BareDay::itsEnd), "2026-10-25T23:00:00Z") << "25 hours";
}

TEST(ParseDate, ADayMayBeginAfterMidnight) {
    const auto beirut = TimeZone::named("Asia/Beirut").value();
    EXPECT_EQ(read("2022-03-27", BareDay::itsStart, beirut), "2022-03-26T22:00:00Z") << "at one o'clock";
}

TEST(ParseDate, ABareDayOutsideTheYearsOfUtcIsNone) {
    EXPECT_EQ(read("0000-01-01"), "-") << "Prague is ahead of UTC";
    EXPECT_NE(read("0000-01-02"), "-");
    EXPECT_EQ(read("9999-12-31"), "9999-12-30T23:00:00Z");
    EXPECT_EQ(read("9999-12-31", BareDay::itsEnd), "9999-12-31T23:00:00Z");
    const auto west = TimeZone::named("America/New_York").value();
    EXPECT_EQ(read("9999-12-31", BareDay::itsEnd, west), "-");
}

TEST(FormatLocalDate, ShowsTheTimeOfTheZoneAndItsOffset) {
    struct Row {
        const char* moment;
        const char* zone;
        const char* shown;
    };

    for (const auto& row : {
             Row{"2026-03-14T09:00:00Z", "Europe/Prague", "2026-03-14T10:00:00+01:00"},
             Row{"2026-03-29T00:59:59Z", "Europe/Prague", "2026-03-29T01:59:59+01:00"},
             Row{"2026-03-29T01:00:00Z", "Europe/Prague", "2026-03-29T03:00:00+02:00"},
             Row{"2026-10-25T00:30:00Z", "Europe/Prague", "2026-10-25T02:30:00+02:00"},
             Row{"2026-10-25T01:30:00Z", "Europe/Prague", "2026-10-25T02:30:00+01:00"},
             Row{"2026-03-14T02:00:00Z", "America/St_Johns", "2026-03-13T23:30:00-02:30"},
             Row{"2026-03-14T09:00:00Z", "Asia/Kathmandu", "2026-03-14T14:45:00+05:45"},
             Row{"2026-03-14T09:00:00Z", "Europe/London", "2026-03-14T09:00:00Z"},
         }) {
        const auto zone = TimeZone::named(row.zone).value();
        EXPECT_EQ(formatLocalDate(*parseWireDate(row.moment), zone), row.shown);
        EXPECT_EQ(read(row.shown, BareDay::itsStart, zone), row.moment);
    }
    EXPECT_EQ(formatLocalDate(dateFromSeconds(0) + std::chrono::microseconds(999'999), prague),
              "1970-01-01T01:00:00+01:00")
        << "no fraction";
}

TEST(FormatLocalDate, AnOffsetWithSecondsStillTellsTheMoment) {
    const auto moment = *parseWireDate("1850-01-01T12:00:00Z");
    const auto shown = formatLocalDate(moment, prague);
    EXPECT_EQ(shown, "1850-01-01T12:57:00+00:57");
    EXPECT_EQ(read(shown), "1850-01-01T12:00:00Z");
}

TEST(FormatLocalDate, AMomentThatHasNoFormIsShownAsTheNearest) {
    for (const auto date :
         {Date::min(), Date::max(), dateFromSeconds(-62'167'219'201), dateFromSeconds(253'402'300'800)})
        for (const char* name : {"Europe/Prague", "Pacific/Kiritimati", "Pacific/Niue"}) {
            const auto zone = TimeZone::named(name).value();
            EXPECT_NE(read(formatLocalDate(date, zone), BareDay::itsStart, zone), "-") << name;
        }
    EXPECT_EQ(formatAnyDate(Date::min()), "0000-01-01T00:00:00Z");
    EXPECT_EQ(formatAnyDate(Date::max()), "9999-12-31T23:59:59Z");
    EXPECT_EQ(formatAnyDate(dateFromSeconds(0)), "1970-01-01T00:00:00Z");
}

} // namespace
} // namespace morvex
