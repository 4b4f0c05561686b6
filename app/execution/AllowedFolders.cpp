#include "app/execution/AllowedFolders.h"

#include "foundation/Paths.h"
#include "foundation/Text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <utility>

namespace morvex {

namespace {

constexpr std::array<std::string_view, 5> desktopAliases = {"desktop", "plocha", "na plose",
                                                            "pracovni plocha", "desktop folder"};

/// In bytes. The name of a folder has at most 255, but a person may say it in another form.
constexpr std::size_t longestAlias = 4096;

std::string folded(std::string_view name) {
    return lowerCase(trim(fold(name)));
}

/// The last `count` parts of a path. With one more than the path has, the result is the whole path with its
/// leading slash; with even more it is empty.
std::optional<std::string> lastParts(std::string_view path, std::size_t count) {
    auto parts = paths::components(path);
    if (count > parts.size() + 1) return std::nullopt;
    if (count > parts.size()) return repairUtf8(path);
    parts.erase(parts.begin(), parts.end() - static_cast<std::ptrdiff_t>(count));
    return repairUtf8(join(parts, "/"));
}

/// Two ways to compare names. No two folders have exactly the same path.
using Sameness = bool (*)(const std::string& one, const std::string& other);
constexpr std::array<Sameness, 2> samenesses = {
    [](const std::string& one, const std::string& other) { return folded(one) == folded(other); },
    [](const std::string& one, const std::string& other) { return one == other; },
};

bool liesIn(std::string_view path, std::string_view folder) {
    if (!path.starts_with(folder)) return false;
    // The slash is required so that /a/b does not admit /a/bc. The root folder therefore admits nothing below
    // it.
    return path.size() == folder.size() || path[folder.size()] == '/';
}

} // namespace

std::vector<std::string> AllowedFolders::aliasy() const {
    std::vector<std::string> names;
    for (std::size_t poradi = 0; poradi < slozky_.size(); ++poradi) names.push_back(alias(poradi));
    return names;
}

/// A folder that is allowed later never takes the name of an earlier one.
std::string AllowedFolders::alias(std::size_t poradi) const {
    const auto& slozka = slozky_[poradi];
    const auto earlier = std::span(slozky_).first(poradi);
    auto bare = paths::lastComponent(slozka);
    const auto wanted = folded(bare);
    if (std::ranges::none_of(earlier, [&](const auto& other) { return isNamed(other, wanted); })) return bare;
    for (const auto same : samenesses)
        for (std::size_t parts = 2; const auto name = lastParts(slozka, parts); ++parts)
            if (std::ranges::none_of(earlier, [&](const auto& other) {
                    const auto taken = lastParts(other, parts);
                    return taken && same(*taken, *name);
                }))
                return *name;
    return bare; // the paths differ only in bytes that are not text
}

std::optional<std::string> AllowedFolders::slozkaProAlias(const std::optional<std::string>& alias) const {
    const auto name = alias ? trim(*alias) : std::string{};
    if (name.empty()) return slozky_.size() == 1 ? std::optional(slozky_.front()) : std::nullopt;
    if (name.size() > longestAlias) return std::nullopt;
    if (name.contains('/')) return folderWithParent(name);
    const auto wanted = folded(name);
    const auto found =
        std::ranges::find_if(slozky_, [&](const auto& slozka) { return isNamed(slozka, wanted); });
    return found == slozky_.end() ? std::nullopt : std::optional(*found);
}

std::optional<std::string> AllowedFolders::folderWithParent(const std::string& alias) const {
    const auto names = aliasy();
    for (const auto same : {samenesses[1], samenesses[0]})
        for (std::size_t poradi = 0; poradi < names.size(); ++poradi)
            if (same(names[poradi], alias)) return slozky_[poradi];
    return std::nullopt;
}

std::optional<AllowedFolders::Zacatek>
AllowedFolders::leadingFolder(const std::vector<std::string>& parts) const {
    std::size_t most = 1;
    for (const auto& name : aliasy()) most = std::max(most, paths::components(name).size());
    for (auto count = std::min(most, parts.size()); count > 0; --count) {
        const std::vector<std::string> name(parts.begin(),
                                            parts.begin() + static_cast<std::ptrdiff_t>(count));
        if (auto slozka = slozkaProAlias(join(name, "/"))) return Zacatek{*std::move(slozka), count};
    }
    return std::nullopt;
}

bool AllowedFolders::obsahuje(std::string_view cesta) const {
    auto resolved = paths::resolved(cesta);
    return resolved && folderAbove(*resolved);
}

std::optional<std::string> AllowedFolders::folderAbove(std::string_view resolvedPath) const {
    std::optional<std::string> innermost;
    for (const auto& slozka : slozky_)
        if (auto folder = paths::resolved(slozka); folder && liesIn(resolvedPath, *folder))
            if (!innermost || innermost->size() < folder->size()) innermost = std::move(folder);
    return innermost;
}

bool AllowedFolders::isNamed(const std::string& slozka, std::string_view wanted) const {
    if (folded(paths::lastComponent(slozka)) == wanted) return true;
    return std::ranges::find(desktopAliases, wanted) != desktopAliases.end() && isDesktop(slozka);
}

bool AllowedFolders::isDesktop(const std::string& slozka) const {
    if (folded(paths::lastComponent(slozka)) == "desktop") return true;
    auto desktop = standardFolders_->desktop();
    auto resolved = desktop ? paths::resolved(*desktop) : std::nullopt;
    return resolved && resolved == paths::resolved(slozka);
}

} // namespace morvex
