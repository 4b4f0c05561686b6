#pragma once

#include "shared/base/Sentence.h"

#include <optional>
#include <string>

namespace morvex {

/// What one line of an agent's event stream reports.
struct ZpravaAgenta {
    std::optional<std::string> relace; ///< id of the session
    std::optional<std::string> prubeh; ///< progress, in words for the user
    std::optional<std::string> text;   ///< a piece of what the agent says
    std::optional<std::string> zaver;  ///< the final answer
    std::optional<Sentence> chyba;     ///< why the agent gives up

    bool operator==(const ZpravaAgenta&) const = default;
};

} // namespace morvex
