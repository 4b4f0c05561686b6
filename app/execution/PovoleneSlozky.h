#pragma once

#include "platform/ports/StandardFolders.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace morvex {

/// The allowed folders as they stood at one moment, and the answers that follow from them. A plain value that
/// may travel to a worker; links are resolved at every question. The standard folders outlive it.
class PovoleneSlozky {
  public:
    /// `slozky` are standardized absolute paths.
    PovoleneSlozky(std::vector<std::string> slozky, const StandardFolders& standardFolders)
        : slozky_(std::move(slozky)), standardFolders_(&standardFolders) {}

    [[nodiscard]] const std::vector<std::string>& slozky() const { return slozky_; }

    [[nodiscard]] const StandardFolders& standardFolders() const { return *standardFolders_; }

    /// The names of the folders, in order: all that others are told about them. It is the last component of
    /// each; where an earlier folder goes by that already, as many parents stand before it, as in
    /// "prace/projekt", as no earlier folder ends with.
    [[nodiscard]] std::vector<std::string> aliasy() const;

    /// The folder that a person means by this name, one of `aliasy` without regard to case and diacritics;
    /// the only folder when no name is given.
    [[nodiscard]] std::optional<std::string> slozkaProAlias(const std::optional<std::string>& alias) const;

    /// A folder, and how many parts of a path name it.
    struct Zacatek {
        std::string slozka;
        std::size_t casti = 0;
    };

    /// The folder that the first parts of a relative path name, the longest name first.
    [[nodiscard]] std::optional<Zacatek> slozkaNaZacatku(const std::vector<std::string>& casti) const;

    /// Whether this absolute path, its links resolved, lies in an allowed folder or is one.
    [[nodiscard]] bool obsahuje(std::string_view cesta) const;

    /// The allowed folder, its links resolved, in which a resolved path lies; of several the innermost.
    [[nodiscard]] std::optional<std::string> slozkaNad(std::string_view resolvedPath) const;

  private:
    [[nodiscard]] std::string alias(std::size_t poradi) const;
    /// By a name that has parents in it. One that is spelled exactly comes first.
    [[nodiscard]] std::optional<std::string> slozkaSRodicem(const std::string& alias) const;
    /// By its own name, or as the desktop; `wanted` without case and diacritics.
    [[nodiscard]] bool jmenujeSe(const std::string& slozka, std::string_view wanted) const;
    [[nodiscard]] bool jePlocha(const std::string& slozka) const;

    std::vector<std::string> slozky_;
    const StandardFolders* standardFolders_;
};

} // namespace morvex
