#pragma once

#include "app/agents/AgentAdapter.h"

namespace morvex {

/// The agent behind `claude -p --output-format stream-json`. It accepts its own edits, and its allowed tools
/// do not include a shell; the folder is its working directory.
class ClaudeCodeAdapter final : public AgentAdapter {
  public:
    [[nodiscard]] std::string id() const override;
    [[nodiscard]] std::vector<std::string> jmenaBinarky() const override;
    [[nodiscard]] Sentence napoveda() const override;
    [[nodiscard]] std::vector<std::string> argumenty(std::string instrukce, std::string slozka,
                                                     std::optional<std::string> relace) const override;
    [[nodiscard]] std::optional<ZpravaAgenta> precti(std::string_view line) const override;
    [[nodiscard]] bool isSessionGone(std::string_view chyby) const override;
    [[nodiscard]] std::optional<LoginCheck> loginCheck() const override;
};

} // namespace morvex
