#include "app/organizer/NominatimSearch.h"

#include "shared/base/PercentEncoding.h"
#include "shared/base/Try.h"
#include "shared/wire/Json.h"

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/value.hpp>

#include <charconv>
#include <cmath>
#include <string_view>
#include <utility>

namespace morvex {

namespace {

std::unexpected<Error> failedSearch() {
    return fail(TextError("Hledání místa selhalo."_sentence));
}

std::string_view textAt(const boost::json::object& place, std::string_view key) {
    const auto* value = place.if_contains(key);
    const auto* text = value ? value->if_string() : nullptr;
    return text ? std::string_view(*text) : std::string_view();
}

/// A number that stands as text, within `limit` on both sides of 0.
std::optional<double> degrees(std::string_view text, double limit) {
    double number = 0;
    const auto* end = text.data() + text.size();
    const auto [last, error] = std::from_chars(text.data(), end, number, std::chars_format::fixed);
    if (error != std::errc() || last != end || !(std::abs(number) <= limit)) return std::nullopt;
    return number;
}

} // namespace

Task<Result<std::optional<FoundPlace>>> NominatimSearch::find(std::string text, std::stop_token stop) {
    if (text.size() > longestText) co_return std::optional<FoundPlace>();
    auto reply =
        co_await http_.send({.url = address_ + "/search?q=" + percentEncoded(text) + "&format=jsonv2&limit=1",
                             .headers = {{"User-Agent", "Morvex/" + version_}},
                             .timeLimit = timeLimit,
                             .replyLimit = replyLimit,
                             .stop = std::move(stop)});
    if (!reply) co_return fail(std::move(reply).error());
    if (reply->status != 200) co_return failedSearch();
    co_return read(reply->body);
}

Result<std::optional<FoundPlace>> NominatimSearch::read(const std::string& body) {
    TRY(const auto, json, parseJson(body));
    const auto* places = json.if_array();
    if (!places) return failedSearch();
    if (places->empty()) return std::nullopt;
    const auto* place = places->front().if_object();
    if (!place) return failedSearch();
    const auto latitude = degrees(textAt(*place, "lat"), 90);
    const auto longitude = degrees(textAt(*place, "lon"), 180);
    if (!latitude || !longitude) return failedSearch();
    return FoundPlace{std::string(textAt(*place, "name")), *latitude, *longitude};
}

} // namespace morvex
