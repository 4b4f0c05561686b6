#pragma once

#include "app/agents/Prubeh.h"
#include "app/agents/ZpravaAgenta.h"
#include "shared/base/Sentence.h"

#include <cstddef>
#include <mutex>
#include <set>
#include <string>

namespace morvex {

/// Collects what one run reports: the latest non-empty value of each kind. Written on the thread that reads
/// the output, read by whoever awaits the run; safe from both.
class SberatelZprav {
  public:
    enum class Relace { fresh, known };

    /// At most this many sessions of one run are reported as new; no honest agent has that many.
    static constexpr std::size_t mostSessions = 16;

    /// Whether the message reports a session that no earlier message reported.
    Relace add(const ZpravaAgenta& zprava);

    [[nodiscard]] Prubeh prubeh(VysledekProcesu vysledek) const;

  private:
    mutable std::mutex zamek_;
    std::optional<std::string> relace_;
    std::optional<std::string> posledniText_;
    std::optional<std::string> zaver_;
    std::optional<Sentence> chyba_;
    std::set<std::string> knownSessions_;
};

} // namespace morvex
