#include "shared/base/Date.h"

#include "shared/base/Require.h"

#include <cmath>

namespace morvex {
namespace {

constexpr std::string_view form = "0000-00-00T00:00:00Z";
constexpr std::chrono::sys_days firstDay{std::chrono::year{0} / 1 / 1};
constexpr std::chrono::sys_days lastDay{std::chrono::year{9999} / 12 / 31};
constexpr Date start2001{std::chrono::sys_days{std::chrono::year{2001} / 1 / 1}};

void writeDigits(std::string& text, std::size_t place, std::size_t count, unsigned number) {
    for (std::size_t digit = count; digit-- > 0; number /= 10)
        text[place + digit] = static_cast<char>('0' + number % 10);
}

unsigned readDigits(std::string_view text, std::size_t place, std::size_t count) {
    unsigned number = 0;
    for (const char digit : text.substr(place, count))
        number = number * 10 + static_cast<unsigned>(digit - '0');
    return number;
}

bool hasTheForm(std::string_view text) {
    if (text.size() != form.size()) return false;
    for (std::size_t index = 0; index < form.size(); ++index) {
        const bool isDigit = text[index] >= '0' && text[index] <= '9';
        if (form[index] == '0' ? !isDigit : text[index] != form[index]) return false;
    }
    return true;
}

} // namespace

std::string formatDate(Date date) {
    using namespace std::chrono;
    const sys_seconds second{seconds{wholeSeconds(date)}};
    const auto midnight = floor<days>(second);
    require(midnight >= firstDay && midnight <= lastDay, "a date outside the years 0 to 9999 has no form");
    const year_month_day day{midnight};
    const hh_mm_ss time{second - midnight};

    std::string text{form};
    writeDigits(text, 0, 4, static_cast<unsigned>(static_cast<int>(day.year())));
    writeDigits(text, 5, 2, static_cast<unsigned>(day.month()));
    writeDigits(text, 8, 2, static_cast<unsigned>(day.day()));
    writeDigits(text, 11, 2, static_cast<unsigned>(time.hours().count()));
    writeDigits(text, 14, 2, static_cast<unsigned>(time.minutes().count()));
    writeDigits(text, 17, 2, static_cast<unsigned>(time.seconds().count()));
    return text;
}

std::optional<Date> parseWireDate(std::string_view text) {
    using namespace std::chrono;
    if (!hasTheForm(text)) return std::nullopt;
    const year_month_day date{year{static_cast<int>(readDigits(text, 0, 4))}, month{readDigits(text, 5, 2)},
                              day{readDigits(text, 8, 2)}};
    const auto hour = readDigits(text, 11, 2);
    const auto minute = readDigits(text, 14, 2);
    const auto second = readDigits(text, 17, 2);
    if (!date.ok() || hour > 23 || minute > 59 || second > 59) return std::nullopt;
    return Date{sys_days{date} + hours{hour} + minutes{minute} + seconds{second}};
}

double secondsSince2001(Date date) {
    const auto since = date - start2001;
    const auto whole = std::chrono::floor<std::chrono::seconds>(since);
    return static_cast<double>(whole.count()) + std::chrono::duration<double>(since - whole).count();
}

std::optional<Date> dateSince2001(double seconds) {
    constexpr double behindAllDates = 0x1p40;
    if (!(std::abs(seconds) < behindAllDates)) return std::nullopt;
    const auto whole = std::floor(seconds);
    // Far from 2001 a double cannot represent microseconds, and its last bit may change with each round trip;
    // milliseconds are stable.
    const std::int64_t step = std::abs(seconds) < 0x1p31 ? 1 : 1000;
    const auto steps = std::llround((seconds - whole) * 1e6 / static_cast<double>(step));
    const auto date =
        start2001 + std::chrono::seconds{static_cast<std::int64_t>(whole)} + Date::duration{steps * step};
    if (date < firstDay || date >= lastDay + std::chrono::days{1}) return std::nullopt;
    return date;
}

} // namespace morvex
