// A date in the argument of a tool: whatever is read can be written in the time of every zone, and is read
// again as the same second.

#include "app/organizer/DateArgument.h"
#include "shared/base/Bytes.h"
#include "shared/base/Require.h"

#include <chrono>
#include <string>
#include <vector>

using namespace morvex;

namespace {

const std::vector<TimeZone>& zones() {
    static const auto all = [] {
        std::vector<TimeZone> found;
        for (const char* name :
             {"Europe/Prague", "UTC", "Pacific/Apia", "America/St_Johns", "Asia/Kathmandu"})
            found.push_back(TimeZone::named(name).value());
        return found;
    }();
    return all;
}

void checkForm(Date date, const TimeZone& zone) {
    using namespace std::chrono;
    const auto form = formatLocalDate(date, zone);
    const auto again = parseDate(form, BareDay::itsStart, zone);
    require(again.has_value(), "a date that was written cannot be read");
    const bool isFarFromTheEdges =
        date > Date{sys_days{year{1} / 1 / 1}} && date < Date{sys_days{year{9998} / 1 / 1}};
    if (isFarFromTheEdges) require(*again == floor<seconds>(date), "a date is another one after its way");
    (void)formatAnyDate(date);
}

void check(std::string_view text, const TimeZone& zone) {
    const auto start = parseDate(text, BareDay::itsStart, zone);
    const auto end = parseDate(text, BareDay::itsEnd, zone);
    if (start) checkForm(*start, zone);
    if (end) checkForm(*end, zone);
    if (!start || !end) return;
    require(*start <= *end && *end - *start <= std::chrono::hours(49), "a day has a wrong length");
    const bool isBareDay = text.size() == std::string_view("2026-03-14").size();
    require(isBareDay || *start == *end, "a moment depends on what a bare day means");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(asText({data, size}));
    for (const auto& zone : zones()) check(text, zone);
    if (const auto known = parseWireDate(text))
        require(parseDate(text, BareDay::itsStart, zones().front()) == known,
                "a date of the wire is another one");
    return 0;
}
