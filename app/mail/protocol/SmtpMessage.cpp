#include "app/mail/protocol/SmtpMessage.h"

#include "shared/base/Base64.h"

#include <array>
#include <cstdint>
#include <string_view>

namespace morvex {

namespace {

std::string encodedWord(std::string_view text) {
    return "=?UTF-8?B?" + base64Encode(asBytes(text)) + "?=";
}

std::string twoDigits(std::int64_t number) {
    return (number < 10 ? "0" : "") + std::to_string(number);
}

std::string timeOfDay(std::chrono::seconds sinceMidnight) {
    const std::chrono::hh_mm_ss time(sinceMidnight);
    return twoDigits(time.hours().count()) + ":" + twoDigits(time.minutes().count()) + ":" +
           twoDigits(time.seconds().count());
}

/// "+0100".
std::string zoneText(std::chrono::seconds offset) {
    const std::chrono::hh_mm_ss size(std::chrono::abs(offset));
    return (offset.count() < 0 ? "-" : "+") + twoDigits(size.hours().count()) +
           twoDigits(size.minutes().count());
}

/// "Sat, 14 Mar 2026 10:00:00 +0100".
std::string mailDate(Date date, std::chrono::seconds offset) {
    constexpr std::array weekdays{"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
    constexpr std::array months{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    const auto local = std::chrono::floor<std::chrono::seconds>(date + offset);
    const auto midnight = std::chrono::floor<std::chrono::days>(local);
    const std::chrono::year_month_day day(midnight);
    return std::string(weekdays[std::chrono::weekday(midnight).c_encoding()]) + ", " +
           std::to_string(static_cast<unsigned>(day.day())) + " " +
           months[static_cast<unsigned>(day.month()) - 1] + " " +
           std::to_string(static_cast<int>(day.year())) + " " + timeOfDay(local - midnight) + " " +
           zoneText(offset);
}

std::string base64Lines(std::string_view text) {
    constexpr std::size_t width = 76;
    const auto digits = base64Encode(asBytes(text));
    std::string lines;
    lines.reserve(digits.size() + digits.size() / width * 2);
    for (std::size_t begin = 0; begin < digits.size(); begin += width) {
        if (begin > 0) lines += "\r\n";
        lines.append(digits, begin, width);
    }
    return lines;
}

} // namespace

std::string SmtpMessage::text() const {
    return "From: " + encodedWord(senderName) + " <" + sender + ">\r\n" + //
           "To: <" + recipient + ">\r\n" +                                //
           "Subject: " + encodedWord(subject) + "\r\n" +                  //
           "Date: " + mailDate(date, offset) + "\r\n" +
           "MIME-Version: 1.0\r\n"
           "Content-Type: text/plain; charset=UTF-8\r\n"
           "Content-Transfer-Encoding: base64\r\n"
           "\r\n" +
           base64Lines(body);
}

} // namespace morvex
