#pragma once

#include "app/execution/AllowedFolders.h"
#include "shared/base/Error.h"

#include <optional>
#include <string>
#include <string_view>

namespace morvex {

/// A path that passed the path check. It describes the state at the time of the check, so a file must be
/// opened through `BeneathFolder`, which refuses what was swapped since, and never by the requested text.
struct CheckedPath {
    std::string cesta;  ///< absolute, links resolved, no NUL byte; a link in it must be newer than the check
    std::string slozka; ///< the allowed folder that contains it, links resolved

    /// The path relative to the folder; empty for the folder itself.
    [[nodiscard]] std::string_view belowFolder() const;

    /// The last component, for the user.
    [[nodiscard]] std::string jmeno() const;
};

/// The path check. A relative path starts in the allowed folder that its first components name, otherwise in
/// the folder that `slozka` names. May block on the disk; fails with `SouboryChyba`.
Result<CheckedPath> overCestu(const std::string& cesta, const std::optional<std::string>& slozka,
                              const AllowedFolders& slozky);

} // namespace morvex
