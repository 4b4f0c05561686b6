#include "app/ui/ShortDate.h"

#include <QLocale>
#include <gtest/gtest.h>

namespace morvex {
namespace {

const Date moment = dateFromSeconds(1'800'000'005); // 15 January 2027, 08:00:05 UTC

TEST(ShortDate, ATimeOfDayHasSecondsAndNoZoneInEveryLocale) {
    const std::pair<QLocale, const char*> table[] = {
        {QLocale(QLocale::Czech), "8:00:05"},
        {QLocale(QLocale::German), "08:00:05"},
        {QLocale(QLocale::French), "08:00:05"},
        {QLocale(QLocale::Spanish, QLocale::Spain), "8:00:05"},
        {QLocale(QLocale::English, QLocale::UnitedKingdom), "08:00:05"},
        {QLocale::c(), "08:00:05"},
    };
    for (const auto& [locale, expected] : table)
        EXPECT_EQ(timeWithSeconds(moment, locale).toStdString(), expected) << locale.name().toStdString();
}

TEST(ShortDate, ADayComesInTheShortForm) {
    EXPECT_EQ(shortDate(moment, QLocale(QLocale::Czech)).toStdString(), "15.01.27 8:00");
    EXPECT_EQ(shortDate(moment, QLocale(QLocale::German)).toStdString(), "15.01.27 08:00");
}

TEST(ShortDate, ComesInTheLocaleOfTheSystem) {
    // That of these tests is Czech.
    EXPECT_EQ(shortDate(moment).toStdString(), "15.01.27 8:00");
    EXPECT_EQ(timeWithSeconds(moment).toStdString(), "8:00:05");
}

} // namespace
} // namespace morvex
