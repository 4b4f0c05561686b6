#include "relay/HttpReply.h"

#include <boost/beast/http/field.hpp>
#include <boost/beast/http/status.hpp>

#include <array>
#include <chrono>
#include <cstdio>
#include <string>
#include <utility>

namespace morvex {

namespace http = boost::beast::http;

std::string httpDate(Date time) {
    static constexpr std::array days{"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
    static constexpr std::array months{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                       "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    const auto day = std::chrono::floor<std::chrono::days>(time);
    const std::chrono::year_month_day date{day};
    const std::chrono::hh_mm_ss clock{std::chrono::floor<std::chrono::seconds>(time - day)};
    std::array<char, 40> text{};
    std::snprintf(text.data(), text.size(), "%s, %02u %s %04d %02d:%02d:%02d GMT",
                  days[std::chrono::weekday{day}.c_encoding()], unsigned{date.day()},
                  months[unsigned{date.month()} - 1], int{date.year()},
                  static_cast<int>(clock.hours().count()), static_cast<int>(clock.minutes().count()),
                  static_cast<int>(clock.seconds().count()));
    return text.data();
}

http::response<http::string_body> httpReply(CallReply reply, Date now) {
    http::response<http::string_body> response{static_cast<http::status>(reply.status), 11};
    response.keep_alive(false);
    response.set(http::field::date, httpDate(now));
    response.set(http::field::cache_control, "no-store");
    if (reply.status == 405) response.set(http::field::allow, "POST");
    if (reply.status == 426) {
        // RFC 9110, section 7.8, and RFC 6455, section 4.4.
        response.set(http::field::connection, "close, upgrade");
        response.set(http::field::upgrade, "websocket");
        response.set(http::field::sec_websocket_version, "13");
    }
    if (reply.retryAfter > reply.retryAfter.zero())
        response.set(http::field::retry_after, std::to_string(reply.retryAfter.count()));
    if (!reply.body.empty()) response.set(http::field::content_type, "application/json");
    response.body() = std::move(reply.body);
    response.prepare_payload();
    return response;
}

} // namespace morvex
