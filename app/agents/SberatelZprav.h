#pragma once

#include "app/agents/Prubeh.h"
#include "app/agents/ZpravaAgenta.h"

#include <mutex>

namespace morvex {

/// Collects what one run tells: of each kind the latest that is not empty. Written on the thread that reads
/// the output, read by whoever awaits the run; safe from both.
class SberatelZprav {
  public:
    enum class Relace { nova, znama };

    /// Whether the message told another session than the one before.
    Relace pridej(const ZpravaAgenta& zprava);

    [[nodiscard]] Prubeh prubeh(VysledekProcesu vysledek) const;

  private:
    mutable std::mutex zamek_;
    std::optional<std::string> relace_;
    std::optional<std::string> posledniText_;
    std::optional<std::string> zaver_;
    std::optional<std::string> chyba_;
};

} // namespace morvex
