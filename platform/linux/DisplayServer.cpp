#include "platform/linux/DisplayServer.h"

#include <cstdlib>
#include <string_view>

namespace morvex {

bool isThereADisplay() {
    for (const char* name : {"WAYLAND_DISPLAY", "DISPLAY"})
        if (const char* value = std::getenv(name); value && !std::string_view(value).empty()) return true;
    return false;
}

} // namespace morvex
