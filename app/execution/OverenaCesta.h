#pragma once

#include "app/execution/PovoleneSlozky.h"
#include "shared/base/Error.h"

#include <optional>
#include <string>
#include <string_view>

namespace morvex {

/// A path that passed the path check. It tells how things stood at the check: whoever opens the file does so
/// through `BeneathFolder`, which refuses what was swapped since, and never by the text that was asked for.
struct OverenaCesta {
    std::string cesta;  ///< absolute, links resolved, no NUL byte; a link in it appeared later
    std::string slozka; ///< the allowed folder in which it lies, links resolved

    /// The way from the folder to the path; empty for the folder itself.
    [[nodiscard]] std::string_view odSlozky() const;

    /// The last component, for a person.
    [[nodiscard]] std::string jmeno() const;
};

/// The path check. A relative path begins in the allowed folder that its first components name, else in
/// the one that `slozka` names. May block on the disk; fails with `SouboryChyba`.
Result<OverenaCesta> overCestu(const std::string& cesta, const std::optional<std::string>& slozka,
                               const PovoleneSlozky& slozky);

} // namespace morvex
