#include "shared/wire/MacToolName.h"

#include <algorithm>

namespace morvex::MacToolName {

std::string functionName(std::string_view name) {
    std::string text{name};
    std::ranges::replace(text, '.', '_');
    return text;
}

std::optional<std::string_view> toolName(std::string_view function) {
    const auto found =
        std::ranges::find_if(allNames, [=](std::string_view name) { return functionName(name) == function; });
    return found == allNames.end() ? std::nullopt : std::optional{*found};
}

} // namespace morvex::MacToolName
