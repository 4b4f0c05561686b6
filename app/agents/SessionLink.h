#pragma once

#include "app/agents/UkolAgenta.h"
#include "shared/base/Sentence.h"

#include <optional>
#include <string>

namespace morvex {

/// How the session of a task is opened in its agent's own application.
struct SessionLink {
    std::string url;
    Sentence failure; ///< what the user is told if no application opens it

    /// Empty without a session, or for an agent whose application is not known.
    static std::optional<SessionLink> of(const UkolAgenta& ukol);
};

} // namespace morvex
