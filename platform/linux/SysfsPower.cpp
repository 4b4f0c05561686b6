#include "platform/linux/SysfsPower.h"

#include "foundation/Text.h"
#include "platform/posix/base/AtomicFile.h"

#include <string>
#include <system_error>

namespace morvex {

namespace {

/// The combined state of all power supplies.
struct Supplies {
    bool mainsOnline = false;
    bool otherOnline = false; ///< a USB or wireless charger
    bool adapterOffline = false;
    bool battery = false;
    bool discharging = false;
};

std::string attribute(const std::filesystem::path& supply, const char* name) {
    constexpr std::size_t longest = 4096;
    auto bytes = readWhole(supply / name, longest);
    return bytes && *bytes ? trim(asText(**bytes)) : "";
}

/// False if the supply does not even report its type.
bool note(const std::filesystem::path& supply, Supplies& supplies) {
    auto type = attribute(supply, "type");
    if (type.empty()) return false;
    if (attribute(supply, "scope") == "Device") return true;
    if (type == "Battery" || type == "UPS") {
        supplies.battery = true;
        if (attribute(supply, "status") == "Discharging") supplies.discharging = true;
        return true;
    }
    auto online = attribute(supply, "online");
    if (online == "0") supplies.adapterOffline = true;
    // 1 is a fixed voltage, 2 a programmable one.
    if (online == "1" || online == "2")
        (type == "Mains" ? supplies.mainsOnline : supplies.otherOnline) = true;
    return true;
}

/// A USB port is reported as online also when it supplies too little, or when it powers the attached device;
/// then the state of the battery decides. If the adapter is off while the battery is full or idle, the
/// adapter was unplugged just now.
bool fromMains(const Supplies& supplies) {
    if (supplies.mainsOnline) return true;
    if (supplies.discharging) return false;
    return supplies.otherOnline || !supplies.battery || !supplies.adapterOffline;
}

} // namespace

bool SysfsPower::onMains() const {
    std::error_code error;
    std::filesystem::directory_iterator entry(root_, error);
    Supplies supplies;
    int listed = 0;
    int read = 0;
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        ++listed;
        read += note(entry->path(), supplies) ? 1 : 0;
    }
    if (error || (listed > 0 && read == 0)) return false;
    return fromMains(supplies);
}

} // namespace morvex
