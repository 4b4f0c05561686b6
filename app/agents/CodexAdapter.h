#pragma once

#include "app/agents/AgentAdapter.h"

namespace morvex {

/// The agent behind `codex exec --json`. It may write only inside the folder.
class CodexAdapter final : public AgentAdapter {
  public:
    [[nodiscard]] std::string id() const override;
    [[nodiscard]] std::vector<std::string> jmenaBinarky() const override;
    [[nodiscard]] Sentence napoveda() const override;
    [[nodiscard]] std::vector<std::string> argumenty(std::string instrukce, std::string slozka,
                                                     std::optional<std::string> relace) const override;
    [[nodiscard]] std::optional<ZpravaAgenta> precti(std::string_view line) const override;
    [[nodiscard]] bool isSessionGone(std::string_view chyby) const override;
};

} // namespace morvex
