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
    : defaults_(defaults),
      changes_(defaults),
      bookmarks_(bookmarks),
      picker_(picker),
      standardFolders_(standardFolders) {}

std::unique_ptr<Slozky> Slozky::create(UserDefaults& defaults, FolderBookmarks& bookmarks,
                                       FolderPicker& picker, const StandardFolders& standardFolders) {
    std::unique_ptr<Slozky> slozky(new Slozky(defaults, bookmarks, picker, standardFolders));
    slozky->loadBookmarks();
    slozky->loadPaths();
    slozky->ulozit();
    return slozky;
}

Slozky::~Slozky() {
    for (const auto& slozka : aktivniPristupy_) bookmarks_.stopAccess(slozka);
}

const std::vector<std::string>& Slozky::povolene() const {
    requireMainThread();
    return povolene_;
}

const std::set<std::string>& Slozky::vyzadujiObnoveni() const {
    requireMainThread();
    return vyzadujiObnoveni_;
}

const std::optional<Sentence>& Slozky::chybaOpravneni() const {
    requireMainThread();
    return chybaOpravneni_;
}

AllowedFolders Slozky::snapshot() const {
    requireMainThread();
    return {povolene_, standardFolders_};
}

std::vector<std::string> Slozky::aliasy() const {
    requireMainThread();
    if (!aliasy_) aliasy_ = snapshot().aliasy();
    return *aliasy_;
}

std::optional<std::string> Slozky::slozkaProAlias(const std::optional<std::string>& alias) const {
    return snapshot().slozkaProAlias(alias);
}

bool Slozky::obsahuje(std::string_view cesta) const {
    return snapshot().obsahuje(cesta);
}

Task<void> Slozky::pridat() {
    requireMainThread();
    if (chybaOpravneni_) {
        chybaOpravneni_.reset();
        priZmene_.tell();
    }
    FolderPicker::Question question{
        "Povolit"_sentence.czech(), "Vyber složky, ve kterých smí Morvex pracovat."_sentence.czech(), {}};
    if (!vyzadujiObnoveni_.empty()) question.startAt = *vyzadujiObnoveni_.begin();

    auto chosen = co_await picker_.pick(std::move(question));
    if (chosen.empty() || !co_await areWanted(chosen)) co_return;
    const auto newBookmarks = makeBookmarks(std::move(chosen));
    auto saved = co_await saveNewBookmarks(newBookmarks);
    if (!saved) reportFailure(newBookmarks.front().first, saved.error());
    priZmene_.tell();
}

Task<bool> Slozky::areWanted(std::vector<std::string> chosen) {
    std::vector<WideFolder> wideFolders;
    for (const auto& path : chosen)
        if (auto wideFolder = WideFolder::judge(paths::standardized(path), standardFolders_))
            wideFolders.push_back(*std::move(wideFolder));
    if (wideFolders.empty()) co_return true;
    const auto turn = co_await questionTurns_.take();
    for (auto& wideFolder : wideFolders)
        if (!co_await ask(std::move(wideFolder))) co_return false;
    co_return true;
}

Task<bool> Slozky::ask(WideFolder slozka) {
    if (isEnding_) co_return false;
    auto odpoved = std::make_shared<OneShot<Odpoved>>();
    pokracovani_ = odpoved;
    question_ = std::move(slozka);
    onQuestion_.tell();
    co_return co_await odpoved->wait() == Odpoved::yes;
}

const std::optional<WideFolder>& Slozky::question() const {
    requireMainThread();
    return question_;
}

void Slozky::answerQuestion(Odpoved odpoved) {
    requireMainThread();
    if (!question_) return;
    question_.reset();
    std::exchange(pokracovani_, nullptr)->answer(odpoved);
    onQuestion_.tell();
}

Connection Slozky::onQuestion(std::function<void()> callback) {
    requireMainThread();
    return onQuestion_.connect(std::move(callback));
}

void Slozky::shutDown() {
    isEnding_ = true;
    answerQuestion(Odpoved::no);
}

Slozky::NewBookmarks Slozky::makeBookmarks(std::vector<std::string> chosen) {
    NewBookmarks newBookmarks;
    for (const auto& path : chosen) {
        auto slozka = paths::standardized(path);
        auto zalozka = bookmarks_.create(slozka);
        if (zalozka)
            newBookmarks.emplace_back(std::move(slozka), *std::move(zalozka));
        else
            reportFailure(slozka, zalozka.error());
    }
    return newBookmarks;
}

/// A folder is allowed only once that is on the disk. If the user removes a folder meanwhile, the save is
/// repeated without it.
Task<Result<void>> Slozky::saveNewBookmarks(const NewBookmarks& newBookmarks) {
    if (newBookmarks.empty()) co_return Result<void>{};
    auto withNew = [&] {
        auto povolene = povolene_;
        auto zalozky = zalozky_;
        for (const auto& [slozka, zalozka] : newBookmarks) {
            if (std::ranges::find(povolene, slozka) == povolene.end()) povolene.push_back(slozka);
            zalozky[slozka] = zalozka;
        }
        return defaultsValues(povolene, zalozky);
    };
    co_return co_await changes_.make(withNew, [&] {
        for (const auto& [slozka, zalozka] : newBookmarks) allow(slozka, zalozka);
    });
}

void Slozky::reportFailure(const std::string& slozka, const Error& proc) {
    logCause("allowing a folder", proc);
    chybaOpravneni_ = "Oprávnění ke složce {slozka} se nepodařilo uložit: {duvod}"_sentence(
        paths::lastComponent(slozka), proc.popis());
}

void Slozky::odebrat(std::string slozka) {
    requireMainThread();
    slozka = paths::standardized(slozka);
    if (std::erase(povolene_, slozka) == 0) return;
    aliasy_.reset();
    vyzadujiObnoveni_.erase(slozka);
    zalozky_.erase(slozka);
    endAccess(slozka);
    ulozit();
}

Connection Slozky::priZmene(std::function<void()> callback) {
    requireMainThread();
    return priZmene_.connect(std::move(callback));
}

void Slozky::loadBookmarks() {
    for (auto& zalozka : defaults_.dataList(bookmarksKey).value_or(std::vector<Bytes>())) {
        auto resolved = bookmarks_.resolve(zalozka);
        auto slozka = resolved ? keptFolder(resolved->path) : std::nullopt;
        if (!slozka || isAllowed(*slozka)) continue;
        povolene_.push_back(*slozka);
        beginAccess(*slozka);
        if (resolved->stale) zalozka = bookmarks_.create(*slozka).value_or(std::move(zalozka));
        zalozky_[*slozka] = std::move(zalozka);
    }
}

void Slozky::loadPaths() {
    for (const auto& cesta : defaults_.texts(pathsKey).value_or(std::vector<std::string>())) {
        auto slozka = keptFolder(cesta);
        if (!slozka || isAllowed(*slozka)) continue;
        povolene_.push_back(*slozka);
        vyzadujiObnoveni_.insert(*slozka);
    }
}

void Slozky::allow(const std::string& slozka, const Bytes& zalozka) {
    if (!isAllowed(slozka)) povolene_.push_back(slozka);
    aliasy_.reset();
    zalozky_[slozka] = zalozka;
    vyzadujiObnoveni_.erase(slozka);
    endAccess(slozka);
    beginAccess(slozka);
}

bool Slozky::isAllowed(const std::string& slozka) const {
    return std::ranges::find(povolene_, slozka) != povolene_.end();
}

void Slozky::beginAccess(const std::string& slozka) {
    if (bookmarks_.startAccess(slozka)) aktivniPristupy_.insert(slozka);
}

void Slozky::endAccess(const std::string& slozka) {
    if (aktivniPristupy_.erase(slozka) > 0) bookmarks_.stopAccess(slozka);
}

void Slozky::ulozit() {
    defaults_.setTogether(defaultsValues(povolene_, zalozky_));
    priZmene_.tell();
}

/// Both lists go into one save, because a folder that is in only one of them counts as allowed.
DefaultsValues Slozky::defaultsValues(const std::vector<std::string>& povolene,
                                      const std::map<std::string, Bytes>& zalozky) {
    std::vector<DefaultsItem> kept;
    for (const auto& slozka : povolene)
        if (auto found = zalozky.find(slozka); found != zalozky.end()) kept.emplace_back(found->second);
    return {{pathsKey, std::vector<DefaultsItem>(povolene.begin(), povolene.end())},
            {bookmarksKey, std::move(kept)}};
}

void Slozky::requireMainThread() const {
    require(std::this_thread::get_id() == mainThread_, "the allowed folders were used off the main thread");
}

} // namespace morvex
