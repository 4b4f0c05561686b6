#pragma once

#include <functional>
#include <string>

namespace morvex {

/// Callbacks for a running task. Called on the main thread; each may be empty.
struct AgentListener {
    std::function<void(std::string)> priPrubehu; ///< a text for the user; `bezici` already has it
    std::function<void(std::string)> onSession;  ///< each session id, the first time a run reports it
};

} // namespace morvex
