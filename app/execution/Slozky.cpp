#include "app/execution/Slozky.h"

#include "foundation/Paths.h"
#include "foundation/ProgramLog.h"
#include "shared/base/Require.h"

#include <algorithm>
#include <utility>

namespace morvex {

namespace {

constexpr auto bookmarksKey = "slozky.bezpecnostniZalozky";
constexpr auto pathsKey = "slozky.povolene";

/// The path in its standard form; empty if the folder is gone. A folder that cannot be accessed at the moment
/// is kept.
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

const std::vector<std::string>& Slozky::povolene() const {
    vyzadujHlavniVlakno();
    return povolene_;
}

const std::set<std::string>& Slozky::vyzadujiObnoveni() const {
    vyzadujHlavniVlakno();
    return vyzadujiObnoveni_;
}

const std::optional<Sentence>& Slozky::chybaOpravneni() const {
    vyzadujHlavniVlakno();
    return chybaOpravneni_;
}

PovoleneSlozky Slozky::snimek() const {
    vyzadujHlavniVlakno();
    return {povolene_, standardFolders_};
}

std::vector<std::string> Slozky::aliasy() const {
    vyzadujHlavniVlakno();
    if (!aliasy_) aliasy_ = snimek().aliasy();
    return *aliasy_;
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
    FolderPicker::Question question{
        "Povolit"_sentence.czech(), "Vyber složky, ve kterých smí Morvex pracovat."_sentence.czech(), {}};
    if (!vyzadujiObnoveni_.empty()) question.startAt = *vyzadujiObnoveni_.begin();

    auto chosen = co_await picker_.pick(std::move(question));
    if (chosen.empty() || !co_await jsouChtene(chosen)) co_return;
    const auto nove = noveZalozky(std::move(chosen));
    auto ulozeno = co_await ulozitNove(nove);
    if (ulozeno)
        for (const auto& [slozka, zalozka] : nove) povolit(slozka, zalozka);
    else
        nepodariloSe(nove.front().first, ulozeno.error());
    priZmene_.tell();
}

Task<bool> Slozky::jsouChtene(std::vector<std::string> chosen) {
    std::vector<SirokaSlozka> siroke;
    for (const auto& path : chosen)
        if (auto siroka = SirokaSlozka::posoud(paths::standardized(path), standardFolders_))
            siroke.push_back(*std::move(siroka));
    if (siroke.empty()) co_return true;
    const auto turn = co_await otazky_.take();
    for (auto& siroka : siroke)
        if (!co_await zeptatSe(std::move(siroka))) co_return false;
    co_return true;
}

Task<bool> Slozky::zeptatSe(SirokaSlozka slozka) {
    if (konci_) co_return false;
    auto odpoved = std::make_shared<OneShot<Odpoved>>();
    pokracovani_ = odpoved;
    otazka_ = std::move(slozka);
    priOtazce_.tell();
    co_return co_await odpoved->wait() == Odpoved::ano;
}

const std::optional<SirokaSlozka>& Slozky::otazka() const {
    vyzadujHlavniVlakno();
    return otazka_;
}

void Slozky::odpovedet(Odpoved odpoved) {
    vyzadujHlavniVlakno();
    if (!otazka_) return;
    otazka_.reset();
    std::exchange(pokracovani_, nullptr)->answer(odpoved);
    priOtazce_.tell();
}

Connection Slozky::priOtazce(std::function<void()> zavolat) {
    vyzadujHlavniVlakno();
    return priOtazce_.connect(std::move(zavolat));
}

void Slozky::ukoncit() {
    konci_ = true;
    odpovedet(Odpoved::ne);
}

Slozky::Nove Slozky::noveZalozky(std::vector<std::string> chosen) {
    Nove nove;
    for (const auto& path : chosen) {
        auto slozka = paths::standardized(path);
        auto zalozka = bookmarks_.create(slozka);
        if (zalozka)
            nove.emplace_back(std::move(slozka), *std::move(zalozka));
        else
            nepodariloSe(slozka, zalozka.error());
    }
    return nove;
}

/// A folder is allowed only once that is on the disk. If the user removes a folder meanwhile, the save is
/// repeated without it.
Task<Result<void>> Slozky::ulozitNove(const Nove& nove) {
    if (nove.empty()) co_return Result<void>{};
    const auto turn = co_await ukladani_.take();
    Result<void> ulozeno;
    do {
        auto povolene = povolene_;
        auto zalozky = zalozky_;
        for (const auto& [slozka, zalozka] : nove) {
            if (std::ranges::find(povolene, slozka) == povolene.end()) povolene.push_back(slozka);
            zalozky[slozka] = zalozka;
        }
        ulozeno = co_await defaults_.setOnceSaved(hodnoty(povolene, zalozky));
    } while (!ulozeno && ulozeno.error().as<ChangedMeanwhile>());
    co_return ulozeno;
}

void Slozky::nepodariloSe(const std::string& slozka, const Error& proc) {
    logCause("allowing a folder", proc);
    chybaOpravneni_ = "Oprávnění ke složce {slozka} se nepodařilo uložit: {duvod}"_sentence(
        paths::lastComponent(slozka), proc.popis());
}

void Slozky::odebrat(std::string slozka) {
    vyzadujHlavniVlakno();
    slozka = paths::standardized(slozka);
    if (std::erase(povolene_, slozka) == 0) return;
    aliasy_.reset();
    vyzadujiObnoveni_.erase(slozka);
    zalozky_.erase(slozka);
    ukoncitPristup(slozka);
    ulozit();
}

Connection Slozky::priZmene(std::function<void()> zavolat) {
    vyzadujHlavniVlakno();
    return priZmene_.connect(std::move(zavolat));
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

void Slozky::povolit(const std::string& slozka, const Bytes& zalozka) {
    if (!jePovolena(slozka)) povolene_.push_back(slozka);
    aliasy_.reset();
    zalozky_[slozka] = zalozka;
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
    defaults_.setTogether(hodnoty(povolene_, zalozky_));
    priZmene_.tell();
}

/// Both lists go into one save, because a folder that is in only one of them counts as allowed.
DefaultsValues Slozky::hodnoty(const std::vector<std::string>& povolene,
                               const std::map<std::string, Bytes>& zalozky) {
    std::vector<DefaultsItem> kept;
    for (const auto& slozka : povolene)
        if (auto found = zalozky.find(slozka); found != zalozky.end()) kept.emplace_back(found->second);
    return {{pathsKey, std::vector<DefaultsItem>(povolene.begin(), povolene.end())},
            {bookmarksKey, std::move(kept)}};
}

void Slozky::vyzadujHlavniVlakno() const {
    vyzaduj(std::this_thread::get_id() == hlavniVlakno_, "the allowed folders were used off the main thread");
}

} // namespace morvex
