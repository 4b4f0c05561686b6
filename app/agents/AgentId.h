#pragma once

#include <string>
#include <string_view>

/// The keys of the coding agents that this program runs.
namespace morvex::AgentId {

inline constexpr std::string_view codex = "codex";
inline constexpr std::string_view claudeCode = "claude-code";

/// The key for a name that a person or a model uses for an agent ("Claude", "codex-cli"). An unknown name is
/// returned unchanged.
std::string normalized(const std::string& name);

} // namespace morvex::AgentId
