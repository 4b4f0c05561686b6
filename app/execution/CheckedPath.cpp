#include "app/execution/CheckedPath.h"

#include "app/execution/SouboryChyba.h"
#include "foundation/Paths.h"
#include "foundation/Text.h"
#include "shared/base/Try.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

namespace morvex {

namespace {

/// Places of credentials, in the order of testing. A longer name with the same beginning is refused too; a
/// wrong refusal does no harm.
constexpr std::array<std::string_view, 12> forbiddenFragments = {
    "/Library/Keychains",
    "/.ssh",
    "/.aws",
    "/.gnupg",
    "/.config/gh",
    "/.docker/config.json",
    "/.netrc",
    "/.npmrc",
    "/.pypirc",
    "/.kube",
    "/Morvex/vault",
    "/.local/share/keyrings",
};

Result<std::string> absolute(std::string path, const std::optional<std::string>& slozka,
                             const AllowedFolders& slozky) {
    if (path.starts_with('/')) return path;
    auto parts = paths::components(path);
    auto named = slozky.leadingFolder(parts);
    const auto base = named ? std::optional(std::move(named->slozka)) : slozky.slozkaProAlias(slozka);
    if (!base) return fail(SouboryChyba::noFolder("Urči povolenou složku.", slozky.aliasy()));
    if (named) parts.erase(parts.begin(), parts.begin() + static_cast<std::ptrdiff_t>(named->parts));
    return paths::below(*base, join(parts, "/"));
}

} // namespace

std::string_view CheckedPath::belowFolder() const {
    return std::string_view(cesta).substr(std::min(slozka.size() + 1, cesta.size()));
}

std::string CheckedPath::jmeno() const {
    return paths::lastComponent(cesta);
}

Result<CheckedPath> overCestu(const std::string& cesta, const std::optional<std::string>& slozka,
                              const AllowedFolders& slozky) {
    auto trimmed = trim(cesta);
    if (trimmed.empty()) return fail(SouboryChyba{SouboryChyba::Selhalo{"Chybí cesta k souboru."}});
    if (trimmed.contains('\0'))
        return fail(SouboryChyba{SouboryChyba::NeniSoubor{paths::lastComponent(trimmed)}});

    TRY(auto, asked, absolute(expandingTilde(trimmed, slozky.standardFolders()), slozka, slozky));
    auto standardized = paths::standardized(asked);
    auto resolved = paths::resolved(standardized);
    const auto& judged = resolved ? *resolved : standardized;
    for (auto fragment : forbiddenFragments)
        if (judged.contains(fragment))
            return fail(SouboryChyba{SouboryChyba::ZakazanaCesta{std::string(fragment)}});

    auto folder = resolved ? slozky.folderAbove(*resolved) : std::nullopt;
    if (!folder)
        return fail(
            SouboryChyba{SouboryChyba::MimoPovolene{paths::lastComponent(resolved.value_or(standardized))}});
    return CheckedPath{*std::move(resolved), *std::move(folder)};
}

} // namespace morvex
