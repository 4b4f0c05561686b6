#pragma once

#include "platform/ports/StandardFolders.h"
#include "shared/base/Sentence.h"

#include <optional>
#include <string>

namespace morvex {

/// What the user is asked before allowing a folder that contains the home folder or is it.
struct WideFolder {
    enum class Reach { disk, homeFolder, aboveHome };

    std::string slozka; ///< as it was chosen
    Reach reach;

    /// What allowing the folder means.
    [[nodiscard]] Sentence popis() const;

    /// Judges the folder that the path leads to with links resolved. Empty for any folder that does not reach
    /// that far.
    static std::optional<WideFolder> judge(const std::string& slozka, const StandardFolders& standardFolders);

    bool operator==(const WideFolder&) const = default;
};

} // namespace morvex
