#pragma once

#include <functional>
#include <string>

namespace morvex {

/// Hears of a task while it runs. Called on the main thread; each may be empty.
struct PosluchacAgenta {
    std::function<void(std::string)> priPrubehu; ///< a text for the user; `bezici` has it already
    std::function<void(std::string)> priRelaci;  ///< each session id when a run first tells it
};

} // namespace morvex
