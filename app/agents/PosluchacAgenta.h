#pragma once

#include <functional>
#include <string>

namespace morvex {

/// Callbacks for a running task. Called on the main thread; each may be empty.
struct PosluchacAgenta {
    std::function<void(std::string)> priPrubehu; ///< a text for the user; `bezici` already has it
    std::function<void(std::string)> priRelaci;  ///< each session id, the first time a run reports it
};

} // namespace morvex
