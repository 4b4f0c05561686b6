#pragma once

#include "app/programs/VysledekProcesu.h"
#include "shared/base/Sentence.h"

#include <optional>
#include <string>

namespace morvex {

/// How one run of an agent's program has gone.
struct Prubeh {
    std::optional<std::string> relace;
    std::optional<std::string> posledniText;
    std::optional<std::string> zaver;
    std::optional<Sentence> chyba;
    VysledekProcesu vysledek;
    bool navazaniSelhalo = false; ///< the session that was to go on is gone
};

} // namespace morvex
