#pragma once

#include "app/agents/ZpravaAgenta.h"
#include "shared/base/Sentence.h"

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace morvex {

/// How one coding agent is started and how its output is read. Stateless; safe from any thread.
class AgentAdapter {
  public:
    /// A run of the agent that ends with exit code 0 if somebody is logged in.
    struct LoginCheck {
        std::vector<std::string> argumenty;
        std::chrono::seconds limit;
        Sentence problem; ///< what the user is told if nobody is logged in
    };

    virtual ~AgentAdapter() = default;

    /// The agent's key.
    [[nodiscard]] virtual std::string id() const = 0;

    /// Possible names of the program; the first one found is used.
    [[nodiscard]] virtual std::vector<std::string> jmenaBinarky() const = 0;

    /// How to install it.
    [[nodiscard]] virtual Sentence napoveda() const = 0;

    /// The command line, without the program's name. With `relace` it continues that session.
    [[nodiscard]] virtual std::vector<std::string> argumenty(std::string instrukce, std::string slozka,
                                                             std::optional<std::string> relace) const = 0;

    /// Empty if the line is no event or contains nothing of interest.
    [[nodiscard]] virtual std::optional<ZpravaAgenta> precti(std::string_view line) const = 0;

    /// Whether the standard error of a run says that its session is gone.
    [[nodiscard]] virtual bool isSessionGone(std::string_view chyby) const = 0;

    /// Empty for an agent whose login is not checked.
    [[nodiscard]] virtual std::optional<LoginCheck> loginCheck() const { return {}; }
};

} // namespace morvex
