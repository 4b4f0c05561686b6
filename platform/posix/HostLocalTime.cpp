#include "platform/posix/HostLocalTime.h"

#include "foundation/Text.h"
#include "platform/posix/base/AtomicFile.h"
#include "platform/posix/base/PathEntry.h"

#include <cstdlib>
#include <string>
#include <string_view>

namespace morvex {

namespace {

std::string ofProcess() {
    const char* set = std::getenv("TZ");
    std::string_view name = set ? set : "";
    if (name.starts_with(':')) name.remove_prefix(1);
    return std::string(name);
}

std::string ofLink(const std::filesystem::path& link) {
    constexpr std::string_view database = "zoneinfo/";
    const auto target = PathEntry::at(link.string()).target;
    const auto found = target.find(database);
    return found == std::string::npos ? "" : target.substr(found + database.size());
}

std::string ofFile(const std::filesystem::path& file) {
    constexpr std::size_t longest = 256;
    const auto bytes = readWhole(file, longest);
    return bytes && *bytes ? trim(asText(**bytes)) : "";
}

} // namespace

TimeZone HostLocalTime::zone() {
    for (const auto& name : {ofProcess(), ofLink(settings_ / "localtime"), ofFile(settings_ / "timezone")})
        if (auto zone = TimeZone::named(name)) return *std::move(zone);
    return TimeZone::named("UTC").value();
}

} // namespace morvex
