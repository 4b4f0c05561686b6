#pragma once

#include "platform/ports/StandardFolders.h"
#include "shared/base/Sentence.h"

#include <optional>
#include <string>

namespace morvex {

/// What the user is asked before allowing a folder that contains the home folder or is it.
struct SirokaSlozka {
    enum class Dosah { disk, domov, nadDomovem };

    std::string slozka; ///< as it was chosen
    Dosah dosah;

    /// What allowing the folder means.
    [[nodiscard]] Sentence popis() const;

    /// Judges the folder that the path leads to with links resolved. Empty for any folder that does not reach
    /// that far.
    static std::optional<SirokaSlozka> posoud(const std::string& slozka,
                                              const StandardFolders& standardFolders);

    bool operator==(const SirokaSlozka&) const = default;
};

} // namespace morvex
