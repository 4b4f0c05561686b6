#include "app/agents/SessionId.h"

#include "foundation/Printable.h"

namespace morvex {

namespace {

bool isUsable(const std::string& id) {
    if (id.empty() || id.size() > SessionId::longest || id.starts_with('-')) return false;
    return id.find_first_of("\n\t") == std::string::npos && printable(id) == id;
}

} // namespace

std::optional<std::string> SessionId::usable(std::optional<std::string> id) {
    return id && isUsable(*id) ? std::move(id) : std::nullopt;
}

} // namespace morvex
