#pragma once

#include "platform/ports/StandardFolders.h"
#include "shared/base/Sentence.h"

#include <optional>
#include <string>

namespace morvex {

/// What a person is asked before a folder is allowed that reaches as far as the home folder.
struct SirokaSlozka {
    enum class Dosah { disk, domov, nadDomovem };

    std::string slozka; ///< as it was chosen
    Dosah dosah;

    /// What allowing it means.
    [[nodiscard]] Sentence popis() const;

    /// Judged where the links of the path lead. Nothing for any other folder.
    static std::optional<SirokaSlozka> posoud(const std::string& slozka,
                                              const StandardFolders& standardFolders);

    bool operator==(const SirokaSlozka&) const = default;
};

} // namespace morvex
