#include "app/organizer/DateArgument.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>

namespace morvex {

namespace {

using namespace std::chrono;

constexpr Date firstMoment{sys_days{year{0} / 1 / 1}};
constexpr Date behindLast{sys_days{year{9999} / 12 / 31} + days{1}};
/// Moments whose day lies in the years 0 to 9999 in every zone.
constexpr Date firstShown = firstMoment + days{1};
constexpr Date lastShown = behindLast - days{1} - seconds{1};

bool isDigit(char letter) {
    return letter >= '0' && letter <= '9';
}

/// Takes a text apart from its beginning; after the first thing that is missing nothing else is found.
class Scanner {
  public:
    explicit Scanner(std::string_view text) : left_(text) {}

    unsigned digits(std::size_t count) {
        unsigned number = 0;
        for (; count > 0; --count) {
            if (left_.empty() || !isDigit(left_.front())) return fail();
            number = number * 10 + static_cast<unsigned>(take() - '0');
        }
        return number;
    }

    void letter(char wanted) {
        if (!takes(wanted)) fail();
    }

    bool takes(char wanted) {
        if (left_.empty() || left_.front() != wanted) return false;
        left_.remove_prefix(1);
        return true;
    }

    /// Up to nine digits; what is shorter than a microsecond is cut off.
    microseconds fraction() {
        constexpr int mostDigits = 9;
        std::int64_t nanos = 0;
        std::int64_t unit = 1'000'000'000;
        for (int read = 0; !left_.empty() && isDigit(left_.front()); ++read) {
            if (read == mostDigits) return microseconds{fail()};
            unit /= 10;
            nanos += (take() - '0') * unit;
        }
        if (unit == 1'000'000'000) fail();
        return duration_cast<microseconds>(nanoseconds{nanos});
    }

    [[nodiscard]] bool isGood() const { return isGood_; }

    [[nodiscard]] bool isAtEnd() const { return left_.empty(); }

  private:
    char take() {
        const char first = left_.front();
        left_.remove_prefix(1);
        return first;
    }

    unsigned fail() {
        isGood_ = false;
        left_ = {};
        return 0;
    }

    std::string_view left_;
    bool isGood_ = true;
};

year_month_day readDay(Scanner& scanner) {
    const auto number = scanner.digits(4);
    scanner.letter('-');
    const auto month = scanner.digits(2);
    scanner.letter('-');
    const auto day = scanner.digits(2);
    return {year{static_cast<int>(number)}, std::chrono::month{month}, std::chrono::day{day}};
}

/// "10:00", or nothing that is at most 23:59.
std::optional<minutes> readHourAndMinute(Scanner& scanner) {
    const auto hour = scanner.digits(2);
    scanner.letter(':');
    const auto minute = scanner.digits(2);
    if (hour > 23 || minute > 59) return std::nullopt;
    return hours{hour} + minutes{minute};
}

/// How far the time is ahead of UTC.
std::optional<minutes> readOffset(Scanner& scanner) {
    if (scanner.takes('Z')) return minutes{0};
    const bool isWest = scanner.takes('-');
    if (!isWest) scanner.letter('+');
    const auto offset = readHourAndMinute(scanner);
    return isWest && offset ? std::optional(-*offset) : offset;
}

std::optional<Date> readMoment(std::string_view text) {
    Scanner scanner(text);
    const auto day = readDay(scanner);
    scanner.letter('T');
    const auto time = readHourAndMinute(scanner);
    scanner.letter(':');
    const auto second = scanner.digits(2);
    const auto fraction = scanner.takes('.') ? scanner.fraction() : microseconds{0};
    const auto offset = readOffset(scanner);
    if (!scanner.isGood() || !scanner.isAtEnd() || !day.ok() || !time || second > 59 || !offset)
        return std::nullopt;
    return Date{sys_days{day} + *time - *offset + seconds{second} + fraction};
}

/// Days have 23 or 25 hours now and then, so the end is that of the calendar's day.
std::optional<Date> readBareDay(std::string_view text, BareDay bareDay, const TimeZone& zone) {
    Scanner scanner(text);
    auto day = readDay(scanner);
    if (!scanner.isGood() || !scanner.isAtEnd() || !day.ok()) return std::nullopt;
    if (bareDay == BareDay::itsEnd) day = sys_days{day} + days{1};
    return zone.moment({day, seconds{0}});
}

} // namespace

std::optional<Date> parseDate(std::string_view text, BareDay bareDay, const TimeZone& zone) {
    auto date = readMoment(text);
    if (!date) date = readBareDay(text, bareDay, zone);
    if (date && (*date < firstMoment || *date >= behindLast)) return std::nullopt;
    return date;
}

std::string formatLocalDate(Date date, const TimeZone& zone) {
    const auto shown = floor<seconds>(std::clamp(date, firstShown, lastShown));
    // The offsets of the nineteenth century have seconds, which this form does not.
    const auto offset = floor<minutes>(zone.offset(shown));
    auto text = formatDate(shown + offset);
    if (offset == minutes{0}) return text;
    text.pop_back();
    const auto size = abs(offset);
    std::array<char, sizeof "+00:00"> written{};
    std::snprintf(written.data(), written.size(), "%c%02d:%02d", offset < minutes{0} ? '-' : '+',
                  static_cast<int>(size / hours{1}), static_cast<int>(size.count() % 60));
    return text + written.data();
}

std::string formatAnyDate(Date date) {
    return formatDate(std::clamp(date, firstMoment, Date{behindLast - seconds{1}}));
}

} // namespace morvex
