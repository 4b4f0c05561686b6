#include "app/execution/Slozky.h"

#include "foundation/Paths.h"
#include "shared/base/Require.h"

#include <algorithm>
#include <utility>

namespace morvex {

namespace {

constexpr auto bookmarksKey = "slozky.bezpecnostniZalozky";
constexpr auto pathsKey = "slozky.povolene";

/// The path in its standard form, unless the folder is gone. One that cannot be looked at now is not
/// forgotten for it.
std::optional<std::string> keptFolder(const std::string& path) {
    if (!path.starts_with('/')) return std::nullopt;
    auto standardized = paths::standardized(path);
    return paths::isNoFolder(standardized) ? std::nullopt : std::optional(standardized);
}

} // namespace

Slozky::Slozky(UserDefaults& defaults, FolderBookmarks& bookmarks, FolderPicker& picker,
               const StandardFolders& standardFolders)
    : defaults_(defaults), bookmarks_(bookmarks), picker_(picker), standardFolders_(standardFolders) {}

std::unique_ptr<Slozky> Slozky::create(UserDefaults& defaults, FolderBookmarks& bookmarks,
                                       FolderPicker& picker, const StandardFolders& standardFolders) {
    std::unique_ptr<Slozky> slozky(new Slozky(defaults, bookmarks, picker, standardFolders));
    slozky->nacistZalozky();
    slozky->nacistCesty();
    slozky->ulozit();
    return slozky;
}

Slozky::~Slozky() {
    for (const auto& slozka : aktivniPristupy_) bookmarks_.stopAccess(slozka);
}

PovoleneSlozky Slozky::snimek() const {
    vyzadujHlavniVlakno();
    return {povolene_, standardFolders_};
}

std::vector<std::string> Slozky::aliasy() const {
    return snimek().aliasy();
}

std::optional<std::string> Slozky::slozkaProAlias(const std::optional<std::string>& alias) const {
    return snimek().slozkaProAlias(alias);
}

bool Slozky::obsahuje(std::string_view cesta) const {
    return snimek().obsahuje(cesta);
}

Task<void> Slozky::pridat() {
    vyzadujHlavniVlakno();
    if (chybaOpravneni_) {
        chybaOpravneni_.reset();
        priZmene_.tell();
    }
    FolderPicker::Question question{"Povolit", "Vyber složky, ve kterých smí Morvex pracovat.", {}};
    if (!vyzadujiObnoveni_.empty()) question.startAt = *vyzadujiObnoveni_.begin();

    auto chosen = co_await picker_.pick(std::move(question));
    if (chosen.empty()) co_return;
    for (const auto& slozka : chosen) povolit(paths::standardized(slozka));
    ulozit();
}

void Slozky::odebrat(std::string slozka) {
    vyzadujHlavniVlakno();
    slozka = paths::standardized(slozka);
    std::erase(povolene_, slozka);
    vyzadujiObnoveni_.erase(slozka);
    zalozky_.erase(slozka);
    ukoncitPristup(slozka);
    ulozit();
}

void Slozky::priZmene(std::function<void()> zavolat) {
    vyzadujHlavniVlakno();
    priZmene_.add(std::move(zavolat));
}

void Slozky::nacistZalozky() {
    for (auto& zalozka : defaults_.dataList(bookmarksKey).value_or(std::vector<Bytes>())) {
        auto resolved = bookmarks_.resolve(zalozka);
        auto slozka = resolved ? keptFolder(resolved->path) : std::nullopt;
        if (!slozka || jePovolena(*slozka)) continue;
        povolene_.push_back(*slozka);
        zacitPristup(*slozka);
        if (resolved->stale) zalozka = bookmarks_.create(*slozka).value_or(std::move(zalozka));
        zalozky_[*slozka] = std::move(zalozka);
    }
}

void Slozky::nacistCesty() {
    for (const auto& cesta : defaults_.texts(pathsKey).value_or(std::vector<std::string>())) {
        auto slozka = keptFolder(cesta);
        if (!slozka || jePovolena(*slozka)) continue;
        povolene_.push_back(*slozka);
        vyzadujiObnoveni_.insert(*slozka);
    }
}

void Slozky::povolit(const std::string& slozka) {
    auto zalozka = bookmarks_.create(slozka);
    if (!zalozka) {
        chybaOpravneni_ = "Oprávnění ke složce " + paths::lastComponent(slozka) +
                          " se nepodařilo uložit: " + zalozka.error().popis();
        return;
    }
    if (!jePovolena(slozka)) povolene_.push_back(slozka);
    zalozky_[slozka] = *std::move(zalozka);
    vyzadujiObnoveni_.erase(slozka);
    ukoncitPristup(slozka);
    zacitPristup(slozka);
}

bool Slozky::jePovolena(const std::string& slozka) const {
    return std::ranges::find(povolene_, slozka) != povolene_.end();
}

void Slozky::zacitPristup(const std::string& slozka) {
    if (bookmarks_.startAccess(slozka)) aktivniPristupy_.insert(slozka);
}

void Slozky::ukoncitPristup(const std::string& slozka) {
    if (aktivniPristupy_.erase(slozka) > 0) bookmarks_.stopAccess(slozka);
}

void Slozky::ulozit() {
    std::vector<DefaultsItem> cesty(povolene_.begin(), povolene_.end());
    std::vector<DefaultsItem> zalozky;
    for (const auto& slozka : povolene_)
        if (auto found = zalozky_.find(slozka); found != zalozky_.end()) zalozky.emplace_back(found->second);
    // A folder that stands in one of them alone counts as allowed.
    defaults_.setTogether({{pathsKey, std::move(cesty)}, {bookmarksKey, std::move(zalozky)}});
    priZmene_.tell();
}

void Slozky::vyzadujHlavniVlakno() const {
    vyzaduj(std::this_thread::get_id() == hlavniVlakno_, "the allowed folders were used off the main thread");
}

} // namespace morvex
