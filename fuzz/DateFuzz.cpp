// A date on the wire, in both directions and compared with the system's own calendar: the text of any second,
// and any text.

#include "shared/base/Bytes.h"
#include "shared/base/Date.h"
#include "shared/base/Require.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <string>

using namespace morvex;

namespace {

constexpr std::time_t firstSecond = -62'167'219'200; ///< of the year 0
constexpr std::time_t lastSecond = 253'402'300'799;  ///< of the year 9999

std::string written(std::time_t second) {
    std::tm time{};
    ::gmtime_r(&second, &time);
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02d-%02dT%02d:%02d:%02dZ", time.tm_year + 1900,
                  time.tm_mon + 1, time.tm_mday, time.tm_hour, time.tm_min, time.tm_sec);
    return text.data();
}

/// The second that this text denotes.
std::optional<Date> read(const std::string& text) {
    if (text.size() != 20) return std::nullopt;
    const auto number = [&text](std::size_t place, std::size_t digits) {
        return std::atoi(text.substr(place, digits).c_str());
    };
    std::tm time{};
    time.tm_year = number(0, 4) - 1900;
    time.tm_mon = number(5, 2) - 1;
    time.tm_mday = number(8, 2);
    time.tm_hour = number(11, 2);
    time.tm_min = number(14, 2);
    time.tm_sec = number(17, 2);
    const auto second = ::timegm(&time);
    if (second < firstSecond || second > lastSecond || written(second) != text) return std::nullopt;
    return dateFromSeconds(second);
}

/// A second in the range that can be written.
std::time_t secondOf(const std::uint8_t* data, std::size_t size) {
    std::uint64_t number = 0;
    std::memcpy(&number, data, std::min(size, sizeof number));
    return firstSecond + static_cast<std::time_t>(number % std::uint64_t{lastSecond - firstSecond + 1});
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(asText({data, size}));
    require(parseWireDate(text) == read(text), "a text is another date, or no date");
    const auto second = secondOf(data, size);
    const auto form = formatDate(dateFromSeconds(second));
    require(form == written(second), "a date has another text");
    require(parseWireDate(form) == dateFromSeconds(second), "a date is another one after its way");
    return 0;
}
