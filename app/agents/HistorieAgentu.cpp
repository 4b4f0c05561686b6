#include "app/agents/HistorieAgentu.h"

#include "app/agents/AgentId.h"
#include "app/agents/SessionId.h"
#include "app/agents/SessionLink.h"
#include "foundation/Paths.h"
#include "foundation/Text.h"
#include "shared/base/Require.h"
#include "shared/base/Try.h"
#include "shared/wire/Json.h"
#include "shared/wire/PrettyJson.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <limits>
#include <map>
#include <utility>

namespace morvex {

namespace {

/// More than `maximum` tasks need with their longest texts and every character escaped.
constexpr std::size_t fileLimit = std::size_t{128} * 1024 * 1024;
/// No folder that can be opened has a longer path, and no agent a longer name.
constexpr std::size_t longestPath = 4096;

/// The beginning of the text, cut between two code points.
std::string bounded(const std::string& text, std::size_t longest = HistorieAgentu::longestText) {
    return clipped(text, longest);
}

std::optional<std::string> bounded(std::optional<std::string> text) {
    return text ? std::optional(bounded(*text)) : std::nullopt;
}

std::optional<Sentence> bounded(std::optional<Sentence> sentence) {
    const bool isLong = sentence && sentence->czech().size() > HistorieAgentu::longestText;
    return isLong ? std::optional(Sentence(bounded(sentence->czech()))) : sentence;
}

/// The file may come from before these limits or from another program.
UkolAgenta bounded(UkolAgenta ukol) {
    ukol.nazev = bounded(ukol.nazev);
    ukol.instrukce = bounded(ukol.instrukce);
    ukol.nastroj = bounded(std::move(ukol.nastroj), longestPath);
    ukol.slozka = bounded(std::move(ukol.slozka), longestPath);
    ukol.shrnuti = bounded(ukol.shrnuti);
    ukol.chyba = bounded(ukol.chyba);
    ukol.relace = SessionId::usable(std::move(ukol.relace));
    return ukol;
}

bool isUndelivered(const UkolAgenta& ukol) {
    return ukol.dorucenaRevize < ukol.revize;
}

std::optional<std::string> nameIn(const std::optional<std::string>& text) {
    auto trimmed = trim(text.value_or(""));
    return trimmed.empty() ? std::nullopt : std::optional(bounded(trimmed));
}

/// The first task of the work item, or null.
template <class Tasks, class Forgotten>
auto* firstOf(const Uuid& workItemID, Tasks& polozky, Forgotten& forgotten) {
    auto found = std::ranges::find(polozky, workItemID, &UkolAgenta::workItemID);
    if (found != polozky.end()) return &*found;
    return forgotten && forgotten->workItemID == workItemID ? &*forgotten : nullptr;
}

/// The session of the first task that has a session and fulfils `condition`.
template <class Condition>
std::optional<std::string> firstSession(const std::vector<UkolAgenta>& polozky, Condition condition) {
    auto found =
        std::ranges::find_if(polozky, [&](const UkolAgenta& ukol) { return ukol.relace && condition(ukol); });
    return found == polozky.end() ? std::nullopt : found->relace;
}

} // namespace

HistorieAgentu::HistorieAgentu(const std::filesystem::path& applicationSupport, Services services)
    : services_(services),
      soubor_(applicationSupport / "TalkSpan" / "agent-tasks.json", fileLimit),
      saves_(services.saving,
             {[this] { return startSaving(); }, [this](const Result<void>& saved) { finishSaving(saved); }}) {
}

std::unique_ptr<HistorieAgentu> HistorieAgentu::create(const std::filesystem::path& applicationSupport,
                                                       Services services) {
    std::unique_ptr<HistorieAgentu> historie(new HistorieAgentu(applicationSupport, services));
    historie->load();
    return historie;
}

void HistorieAgentu::load() {
    auto bytes = soubor_.read();
    if (bytes && !*bytes) return;
    auto tasks = bytes ? decode<std::vector<UkolAgenta>>(**bytes, fileLimits(fileLimit, (*bytes)->size()))
                       : Result<std::vector<UkolAgenta>>(fail(bytes.error()));
    if (!tasks) {
        if (bytes) soubor_.markDamaged();
        setPotiz("Historii úkolů se nepodařilo načíst: {duvod}"_sentence(tasks.error().popis()));
        return;
    }
    // Tasks with equal dates keep their order.
    std::multimap<Date, UkolAgenta, std::greater<>> byBeginning;
    for (auto& ukol : *tasks) byBeginning.emplace(ukol.zalozeno, bounded(ukol));
    for (auto& [began, ukol] : byBeginning) polozky_.push_back(std::move(ukol));
    if (polozky_.size() > maximum) polozky_.resize(maximum);
    interruptRunning();
}

void HistorieAgentu::interruptRunning() {
    bool isChanged = false;
    for (auto& ukol : polozky_) {
        if (ukol.stav != UkolAgenta::Stav::bezi) continue;
        ukol.stav = UkolAgenta::Stav::preruseno;
        if (!ukol.dokonceno) ukol.dokonceno = services_.saving.clock.now();
        raiseRevision(ukol);
        isChanged = true;
    }
    if (isChanged) ulozit();
}

const std::vector<UkolAgenta>& HistorieAgentu::polozky() const {
    requireMainThread();
    return polozky_;
}

const std::optional<Sentence>& HistorieAgentu::potiz() const {
    requireMainThread();
    return potiz_;
}

const UkolAgenta* HistorieAgentu::bezici() const {
    requireMainThread();
    auto found = std::ranges::find(polozky_, UkolAgenta::Stav::bezi, &UkolAgenta::stav);
    if (found != polozky_.end()) return &*found;
    return forgotten_ && forgotten_->stav == UkolAgenta::Stav::bezi ? &*forgotten_ : nullptr;
}

Connection HistorieAgentu::priZmene(std::function<void()> callback) {
    requireMainThread();
    return priZmene_.connect(std::move(callback));
}

UkolAgenta HistorieAgentu::zaloz(Assignment assignment) {
    requireMainThread();
    auto found = assignment.workItemID ? takeOut(*assignment.workItemID, assignment.nastroj) : std::nullopt;
    auto ukol = found ? *std::move(found) : newTask(assignment);
    ukol.slozka = assignment.slozka;
    if (auto nazev = nameIn(assignment.nazev)) ukol.nazev = *std::move(nazev);
    if (assignment.conversationID) ukol.conversationID = assignment.conversationID;
    ukol.instrukce = bounded(assignment.instrukce);
    polozky_.insert(polozky_.begin(), ukol);
    if (polozky_.size() > maximum) polozky_.resize(maximum);
    ulozit();
    return ukol;
}

std::optional<UkolAgenta> HistorieAgentu::takeOut(const Uuid& workItemID, const std::string& nastroj) {
    auto found = std::ranges::find_if(polozky_, [&](const UkolAgenta& ukol) {
        return ukol.workItemID == workItemID && ukol.nastroj == nastroj;
    });
    if (found == polozky_.end()) return std::nullopt;
    auto ukol = std::move(*found);
    polozky_.erase(found);
    ukol.stav = UkolAgenta::Stav::bezi;
    ukol.dokonceno.reset();
    ukol.shrnuti.reset();
    ukol.chyba.reset();
    raiseRevision(ukol);
    return ukol;
}

UkolAgenta HistorieAgentu::newTask(const Assignment& assignment) {
    UkolAgenta ukol;
    ukol.id = services_.random.uuid();
    ukol.workItemID = assignment.workItemID.value_or(ukol.id);
    ukol.nastroj = assignment.nastroj;
    ukol.nazev = bounded(firstLine(assignment.instrukce));
    ukol.zalozeno = services_.saving.clock.now();
    ukol.aktualizovano = ukol.zalozeno;
    return ukol;
}

template <class Change> void HistorieAgentu::applyChange(const Uuid& workItemID, Change change) {
    requireMainThread();
    auto* ukol = lookUp(workItemID);
    if (!ukol) return;
    change(*ukol);
    raiseRevision(*ukol);
    ulozit();
}

void HistorieAgentu::nastavRelaci(const Uuid& workItemID, std::string relace) {
    auto usable = SessionId::usable(std::move(relace));
    if (usable) applyChange(workItemID, [&](UkolAgenta& ukol) { ukol.relace = *std::move(usable); });
}

void HistorieAgentu::dokonci(const Uuid& workItemID, std::string shrnuti, std::optional<std::string> relace) {
    applyChange(workItemID, [&](UkolAgenta& ukol) {
        ukol.stav = UkolAgenta::Stav::hotovo;
        ukol.dokonceno = services_.saving.clock.now();
        ukol.shrnuti = bounded(shrnuti);
        if (auto usable = SessionId::usable(std::move(relace))) ukol.relace = *std::move(usable);
        ukol.chyba.reset();
    });
}

void HistorieAgentu::selhal(const Uuid& workItemID, Sentence chyba) {
    applyChange(workItemID, [&](UkolAgenta& ukol) {
        ukol.stav = UkolAgenta::Stav::chyba;
        ukol.dokonceno = services_.saving.clock.now();
        ukol.chyba = bounded(std::optional(chyba));
    });
}

void HistorieAgentu::preruseno(const Uuid& workItemID) {
    applyChange(workItemID, [&](UkolAgenta& ukol) {
        ukol.stav = UkolAgenta::Stav::preruseno;
        ukol.dokonceno = services_.saving.clock.now();
        ukol.chyba.reset();
    });
}

std::optional<UkolAgenta> HistorieAgentu::ukol(const Uuid& workItemID) const {
    requireMainThread();
    const auto* found = firstOf(workItemID, polozky_, forgotten_);
    return found ? std::optional(*found) : std::nullopt;
}

std::optional<UkolAgenta> HistorieAgentu::ukolProRelaci(const std::string& nastroj,
                                                        const std::string& relace) const {
    requireMainThread();
    auto found = std::ranges::find_if(
        polozky_, [&](const UkolAgenta& ukol) { return ukol.nastroj == nastroj && ukol.relace == relace; });
    return found == polozky_.end() ? std::nullopt : std::optional(*found);
}

std::vector<UkolAgenta> HistorieAgentu::nedorucene() const {
    requireMainThread();
    std::vector<UkolAgenta> nedorucene;
    std::ranges::copy_if(polozky_, std::back_inserter(nedorucene), isUndelivered);
    if (forgotten_ && isUndelivered(*forgotten_)) nedorucene.push_back(*forgotten_);
    return nedorucene;
}

void HistorieAgentu::potvrd(const Uuid& workItemID, std::uint64_t revize) {
    requireMainThread();
    auto* ukol = acknowledgedTask(workItemID, revize);
    const auto delivered = ukol ? std::min(ukol->revize, revize) : 0;
    if (!ukol || delivered <= ukol->dorucenaRevize) return;
    ukol->dorucenaRevize = delivered;
    ulozit();
}

UkolAgenta* HistorieAgentu::acknowledgedTask(const Uuid& workItemID, std::uint64_t revize) {
    auto first = [this, &workItemID](auto condition) {
        auto found = std::ranges::find_if(polozky_, [&](const UkolAgenta& ukol) {
            return ukol.workItemID == workItemID && condition(ukol);
        });
        return found == polozky_.end() ? nullptr : &*found;
    };
    auto* ukol =
        first([revize](const auto& known) { return known.revize == revize && isUndelivered(known); });
    if (!ukol) ukol = first([revize](const auto& known) { return known.revize >= revize; });
    return ukol ? ukol : lookUp(workItemID);
}

std::optional<std::string> HistorieAgentu::relaceProUkol(const Uuid& workItemID,
                                                         const std::string& nastroj) const {
    requireMainThread();
    return firstSession(polozky_, [&](const UkolAgenta& ukol) {
        return ukol.workItemID == workItemID && ukol.nastroj == nastroj;
    });
}

std::optional<std::string> HistorieAgentu::relaceProSlozku(const std::string& nastroj,
                                                           const std::string& slozka) const {
    requireMainThread();
    return firstSession(
        polozky_, [&](const UkolAgenta& ukol) { return ukol.nastroj == nastroj && ukol.slozka == slozka; });
}

std::optional<UkolAgenta> HistorieAgentu::prijmiPokracovani(const SoughtTask& sought,
                                                            const std::string& relace) {
    requireMainThread();
    auto usable = SessionId::usable(trim(relace));
    auto* ukol = usable ? lookUp(sought) : nullptr;
    if (!ukol) return std::nullopt;
    ukol->relace = *std::move(usable);
    raiseRevision(*ukol);
    ulozit();
    return *ukol;
}

std::optional<UkolAgenta> HistorieAgentu::renameTask(const SoughtTask& sought, const std::string& nazev) {
    requireMainThread();
    auto wanted = nameIn(nazev);
    auto* ukol = wanted ? lookUp(sought) : nullptr;
    if (!ukol) return std::nullopt;
    ukol->nazev = *std::move(wanted);
    raiseRevision(*ukol);
    ulozit();
    return *ukol;
}

bool HistorieAgentu::otevritRelaci(const UkolAgenta& ukol) {
    requireMainThread();
    const auto link = SessionLink::of(ukol);
    if (link && services_.opener.open(link->url)) return true;
    setPotiz(link ? link->failure : "Tento úkol ještě nemá relaci, ve které by šlo pokračovat."_sentence);
    return false;
}

void HistorieAgentu::vymazat() {
    requireMainThread();
    if (const auto* running = bezici()) forgotten_ = UkolAgenta(*running);
    polozky_.clear();
    ulozit();
}

UkolAgenta* HistorieAgentu::lookUp(const Uuid& workItemID) {
    return firstOf(workItemID, polozky_, forgotten_);
}

UkolAgenta* HistorieAgentu::lookUp(const SoughtTask& sought) {
    if (sought.workItemID) return lookUp(*sought.workItemID);
    const auto nastroj = sought.nastroj.transform(AgentId::normalized);
    const auto slozka = sought.slozka ? fold(firstBytes(*sought.slozka, longestPath)) : std::string{};
    auto first = [&](auto isThere) -> UkolAgenta* {
        auto found = std::ranges::find_if(polozky_, [&](const UkolAgenta& ukol) {
            return (!nastroj || ukol.nastroj == *nastroj) && isThere(ukol);
        });
        return found == polozky_.end() ? nullptr : &*found;
    };
    auto* there =
        sought.cesta ? first([&](const auto& ukol) { return ukol.slozka == *sought.cesta; }) : nullptr;
    if (there) return there;
    return first([&](const auto& ukol) {
        return !sought.slozka || fold(paths::lastComponent(ukol.slozka)) == slozka;
    });
}

void HistorieAgentu::raiseRevision(UkolAgenta& ukol) const {
    ukol.aktualizovano = services_.saving.clock.now();
    // A file may contain the highest revision. Starting again from zero would make the task count as
    // delivered.
    if (ukol.revize < std::numeric_limits<std::uint64_t>::max()) ++ukol.revize;
}

void HistorieAgentu::ulozit() {
    (void)saves_.request(0);
    priZmene_.tell();
}

SaveQueue::Save HistorieAgentu::startSaving() {
    return {.write = [this, polozky = polozky_]() -> Result<void> {
        const auto text = encode(polozky);
        TRY(auto, json, parseJson(text, fileLimits(fileLimit, text.size())));
        return soubor_.save(asBytes(prettyJson(json.as_array())));
    }};
}

void HistorieAgentu::finishSaving(const Result<void>& saved) {
    setPotiz(saved ? std::nullopt
                   : std::optional(
                         "Historii úkolů se nepodařilo uložit: {duvod}"_sentence(saved.error().popis())));
}

void HistorieAgentu::setPotiz(std::optional<Sentence> potiz) {
    if (std::exchange(potiz_, potiz) != potiz) priZmene_.tell();
}

void HistorieAgentu::requireMainThread() const {
    require(std::this_thread::get_id() == mainThread_, "the agents' tasks were used off the main thread");
}

} // namespace morvex
