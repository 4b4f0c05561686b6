#include "app/agents/AgentId.h"

#include "foundation/Text.h"

namespace morvex {

std::string AgentId::normalized(const std::string& name) {
    const auto lower = lowerCase(name);
    if (lower.contains("claude")) return std::string(claudeCode);
    if (lower.contains("codex")) return std::string(codex);
    return name;
}

} // namespace morvex
