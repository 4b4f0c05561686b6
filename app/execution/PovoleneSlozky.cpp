#include "app/execution/PovoleneSlozky.h"

#include "foundation/Paths.h"
#include "foundation/Text.h"

#include <algorithm>
#include <array>
#include <utility>

namespace morvex {

namespace {

constexpr std::array<std::string_view, 5> desktopAliases = {"desktop", "plocha", "na plose",
                                                            "pracovni plocha", "desktop folder"};

/// Bytes. The name of a folder has 255 at most, and a person may say it in another form.
constexpr std::size_t longestAlias = 4096;

std::string folded(std::string_view name) {
    return lowerCase(trim(fold(name)));
}

bool liesIn(std::string_view path, std::string_view folder) {
    if (!path.starts_with(folder)) return false;
    // With the slash /a/b does not admit /a/bc. The root folder itself therefore admits nothing below it.
    return path.size() == folder.size() || path[folder.size()] == '/';
}

} // namespace

std::vector<std::string> PovoleneSlozky::aliasy() const {
    std::vector<std::string> names;
    for (const auto& slozka : slozky_) names.push_back(paths::lastComponent(slozka));
    return names;
}

std::optional<std::string> PovoleneSlozky::slozkaProAlias(const std::optional<std::string>& alias) const {
    const auto name = alias ? trim(*alias) : std::string{};
    if (name.empty()) return slozky_.size() == 1 ? std::optional(slozky_.front()) : std::nullopt;
    if (name.size() > longestAlias) return std::nullopt;
    auto wanted = folded(name);
    bool namesDesktop = std::ranges::find(desktopAliases, wanted) != desktopAliases.end();
    for (const auto& slozka : slozky_) {
        if (folded(paths::lastComponent(slozka)) == wanted) return slozka;
        if (namesDesktop && jePlocha(slozka)) return slozka;
    }
    return std::nullopt;
}

bool PovoleneSlozky::obsahuje(std::string_view cesta) const {
    auto resolved = paths::resolved(cesta);
    return resolved && slozkaNad(*resolved);
}

std::optional<std::string> PovoleneSlozky::slozkaNad(std::string_view resolvedPath) const {
    std::optional<std::string> innermost;
    for (const auto& slozka : slozky_)
        if (auto folder = paths::resolved(slozka); folder && liesIn(resolvedPath, *folder))
            if (!innermost || innermost->size() < folder->size()) innermost = std::move(folder);
    return innermost;
}

bool PovoleneSlozky::jePlocha(const std::string& slozka) const {
    if (folded(paths::lastComponent(slozka)) == "desktop") return true;
    auto desktop = standardFolders_->desktop();
    auto resolved = desktop ? paths::resolved(*desktop) : std::nullopt;
    return resolved && resolved == paths::resolved(slozka);
}

} // namespace morvex
