#pragma once

#include "app/programs/VysledekProcesu.h"
#include "shared/base/Sentence.h"

#include <optional>
#include <string>

namespace morvex {

/// The result of one run of an agent's program.
struct Prubeh {
    std::optional<std::string> relace;
    std::optional<std::string> posledniText;
    std::optional<std::string> zaver;
    std::optional<Sentence> chyba;
    VysledekProcesu vysledek;
    bool navazaniSelhalo = false; ///< the session that was to be continued is gone
};

} // namespace morvex
