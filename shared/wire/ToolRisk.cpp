#include "shared/wire/ToolRisk.h"

#include <utility>

namespace morvex {

std::string riskLabel(ToolRisk risk) {
    switch (risk) {
    case ToolRisk::safeRead:
        return "jen čte";
    case ToolRisk::guardedRead:
        return "čte tvoje data";
    case ToolRisk::localChange:
        return "mění místní název";
    case ToolRisk::change:
        return "mění nebo odesílá";
    case ToolRisk::forbidden:
        return "zakázáno";
    }
    std::unreachable();
}

} // namespace morvex
