#pragma once

#include "platform/ports/StandardFolders.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace morvex {

/// A snapshot of the allowed folders that answers questions about them. A plain value that may be passed to a
/// worker; links are resolved at every question. The standard folders outlive it.
class AllowedFolders {
  public:
    /// `slozky` are standardized absolute paths.
    AllowedFolders(std::vector<std::string> slozky, const StandardFolders& standardFolders)
        : slozky_(std::move(slozky)), standardFolders_(&standardFolders) {}

    [[nodiscard]] const std::vector<std::string>& slozky() const { return slozky_; }

    [[nodiscard]] const StandardFolders& standardFolders() const { return *standardFolders_; }

    /// The names of the folders, in order; others learn nothing else about them. A name is the last component
    /// of its folder. If an earlier folder already uses that, parents are put in front, as in
    /// "prace/projekt", until no earlier folder ends the same way.
    [[nodiscard]] std::vector<std::string> aliasy() const;

    /// The folder that a person means by this name: one of `aliasy`, ignoring case and diacritics. Without a
    /// name, the only allowed folder.
    [[nodiscard]] std::optional<std::string> slozkaProAlias(const std::optional<std::string>& alias) const;

    /// A folder and the number of path components that name it.
    struct Zacatek {
        std::string slozka;
        std::size_t parts = 0;
    };

    /// The folder named by the first components of a relative path; the longest name wins.
    [[nodiscard]] std::optional<Zacatek> leadingFolder(const std::vector<std::string>& parts) const;

    /// Whether this absolute path, with links resolved, is or lies in an allowed folder.
    [[nodiscard]] bool obsahuje(std::string_view cesta) const;

    /// The allowed folder, with links resolved, that contains a resolved path; the innermost if there are
    /// several.
    [[nodiscard]] std::optional<std::string> folderAbove(std::string_view resolvedPath) const;

  private:
    [[nodiscard]] std::string alias(std::size_t poradi) const;
    /// Finds a folder by a name that contains parents. An exact match is preferred.
    [[nodiscard]] std::optional<std::string> folderWithParent(const std::string& alias) const;
    /// Whether the folder has this name or is the desktop meant by it; `wanted` has no upper case or
    /// diacritics.
    [[nodiscard]] bool isNamed(const std::string& slozka, std::string_view wanted) const;
    [[nodiscard]] bool isDesktop(const std::string& slozka) const;

    std::vector<std::string> slozky_;
    const StandardFolders* standardFolders_;
};

} // namespace morvex
