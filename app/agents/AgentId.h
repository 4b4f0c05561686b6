#pragma once

#include <string>
#include <string_view>

/// The keys of the coding agents that this program runs.
namespace morvex::AgentId {

inline constexpr std::string_view codex = "codex";
inline constexpr std::string_view claudeCode = "claude-code";

/// The key for what a person or a model calls an agent ("Claude", "codex-cli"). Another name stays as it is.
std::string normalized(const std::string& name);

} // namespace morvex::AgentId
