#include "shared/base/Date.h"

#include <gtest/gtest.h>

#include <cmath>

namespace morvex {
namespace {

using namespace std::chrono_literals;

TEST(Date, WritesWholeSecondsInUtc) {
    EXPECT_EQ(formatDate(dateFromSeconds(1794789956)), "2026-11-16T00:45:56Z");
    EXPECT_EQ(formatDate(dateFromSeconds(0)), "1970-01-01T00:00:00Z");
}

TEST(Date, DropsThePartBelowASecondTowardZero) {
    EXPECT_EQ(formatDate(dateFromSeconds(1) + 999999us), "1970-01-01T00:00:01Z");
    EXPECT_EQ(formatDate(dateFromSeconds(-1) - 999999us), "1969-12-31T23:59:59Z");
    EXPECT_EQ(wholeSeconds(dateFromSeconds(-1) - 1us), -1);
    EXPECT_EQ(formatDate(dateFromSeconds(0) - 1us), "1970-01-01T00:00:00Z");
}

TEST(Date, ReadsBackWhatItWrites) {
    for (const std::int64_t seconds : {-62167219200LL, -1LL, 0LL, 951782400LL, 4102444799LL, 253402300799LL})
        EXPECT_EQ(parseWireDate(formatDate(dateFromSeconds(seconds))), dateFromSeconds(seconds)) << seconds;
}

TEST(Date, KeepsTheYearsZeroAndNinetyNineNinetyNine) {
    EXPECT_EQ(formatDate(dateFromSeconds(-62167219200)), "0000-01-01T00:00:00Z");
    EXPECT_EQ(formatDate(dateFromSeconds(253402300799)), "9999-12-31T23:59:59Z");
}

TEST(DateDeathTest, EndsTheProcessForAYearThatHasNoForm) {
    EXPECT_DEATH(formatDate(dateFromSeconds(253402300800)), "years 0 to 9999");
    EXPECT_DEATH(formatDate(dateFromSeconds(-62167219201)), "years 0 to 9999");
    EXPECT_DEATH(formatDate(Date::max()), "years 0 to 9999");
}

TEST(Date, RefusesEveryOtherForm) {
    for (const auto* text : {
             "",
             "2026-11-16",
             "2026-11-16T00:45:56",
             "2026-11-16T00:45:56.000Z",
             "2026-11-16T00:45:56.5Z",
             "2026-11-16T00:45:56+00:00",
             "2026-11-16T00:45:56z",
             "2026-11-16t00:45:56Z",
             "2026-11-16 00:45:56Z",
             " 2026-11-16T00:45:56Z",
             "2026-11-16T00:45:56Z ",
             "20261116T004556Z",
             "12026-11-16T00:45:56Z",
             "-026-11-16T00:45:56Z",
             "+026-11-16T00:45:56Z",
             "2026-13-16T00:45:56Z",
             "2026-00-16T00:45:56Z",
             "2026-11-00T00:45:56Z",
             "2026-11-31T00:45:56Z",
             "2026-02-29T00:45:56Z",
             "2100-02-29T00:45:56Z",
             "2026-11-16T24:00:00Z",
             "2026-11-16T00:60:00Z",
             "2026-12-31T23:59:60Z",
             "2026-11-1\u0661T00:45:56Z",
         })
        EXPECT_FALSE(parseWireDate(text)) << text;
}

TEST(Date, KnowsTheLeapDay) {
    EXPECT_EQ(parseWireDate("2000-02-29T00:00:00Z"), dateFromSeconds(951782400));
    EXPECT_TRUE(parseWireDate("2028-02-29T23:59:59Z"));
}

TEST(Date, HasANumericFormThatCountsFrom2001) {
    EXPECT_EQ(secondsSince2001(dateFromSeconds(978'307'200)), 0.0);
    EXPECT_EQ(secondsSince2001(dateFromSeconds(0)), -978'307'200.0);
    EXPECT_EQ(dateSince2001(816'482'756.25),
              parseWireDate("2026-11-16T00:45:56Z").value() + std::chrono::milliseconds(250));
}

TEST(Date, ComesThroughItsNumericFormWithItsMicroseconds) {
    const auto whole = parseWireDate("2026-11-16T00:45:56Z").value();
    for (int i = 0; i < 1000; ++i) {
        auto date = whole + std::chrono::microseconds(i * 1009);
        EXPECT_EQ(dateSince2001(secondsSince2001(date)), date) << i;
    }
}

TEST(Date, IsTheSameAfterManyReadingsHoweverFarAwayAndWhateverBecomesOfTheLastBit) {
    for (double number : {252'423'993'599.99927, -63'145'526'399.00003, 2'147'483'648.000008, 5e8 + 1e-6}) {
        const auto first = dateSince2001(number).value();
        for (double end : {-1e18, 1e18})
            EXPECT_EQ(dateSince2001(std::nextafter(secondsSince2001(first), end)), first) << number;
    }
}

TEST(Date, RefusesANumberThatCouldNotBeFormatted) {
    const auto first = secondsSince2001(parseWireDate("0000-01-01T00:00:00Z").value());
    const auto last = secondsSince2001(parseWireDate("9999-12-31T23:59:59Z").value());
    EXPECT_EQ(formatDate(dateSince2001(first).value()), "0000-01-01T00:00:00Z");
    EXPECT_EQ(formatDate(dateSince2001(last + 0.999).value()), "9999-12-31T23:59:59Z");
    for (double number : {first - 1, last + 1, last + 0.9999, 1e300, -1e300, std::nan("")})
        EXPECT_FALSE(dateSince2001(number)) << number;
}

} // namespace
} // namespace morvex
