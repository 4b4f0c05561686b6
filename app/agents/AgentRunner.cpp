#include "app/agents/AgentRunner.h"

#include "app/agents/ProgressQueue.h"
#include "app/agents/SberatelZprav.h"
#include "app/agents/SessionId.h"
#include "app/programs/ProcessRunner.h"
#include "foundation/Paths.h"
#include "foundation/Text.h"
#include "shared/base/Require.h"
#include "shared/base/Try.h"
#include "shared/wire/TalkSpanError.h"

#include <utility>

namespace morvex {

namespace {

constexpr std::chrono::seconds timeLimit{900};
/// The events are read line by line. The end of standard error, which states the cause, becomes a sentence
/// for the user.
constexpr Capture capture{.vystup = 0, .chyby = 64UL * 1024, .errorsPart = Capture::Part::ending};

/// Called on the thread that reads the output. The adapter and everything captured may outlive the runner.
NaRadek follow(std::shared_ptr<const AgentAdapter> adapter, std::shared_ptr<SberatelZprav> collector,
               std::shared_ptr<ProgressQueue> progressQueue, std::weak_ptr<ProcessRunner> proces) {
    return [adapter, collector, progressQueue, proces](std::string_view line) {
        auto zprava = adapter->precti(line);
        if (!zprava) return;
        zprava->relace = SessionId::usable(std::move(zprava->relace));
        ProgressQueue::ProgressItem progressItem;
        if (collector->add(*zprava) == SberatelZprav::Relace::fresh)
            progressItem.relace = std::move(zprava->relace);
        progressItem.prubeh = std::move(zprava->prubeh);
        if (progressItem.relace || progressItem.prubeh) progressQueue->add(std::move(progressItem));
        if (!zprava->chyba) return;
        if (auto running = proces.lock()) running->askToEnd();
    };
}

/// Only standard error decides, whatever ended the run.
bool isSessionGone(const AgentAdapter& adapter, const VysledekProcesu& vysledek) {
    bool failed = vysledek.navratovyKod != 0 || vysledek.zruseno || vysledek.vyprselCas;
    return failed && adapter.isSessionGone(vysledek.chyby);
}

Result<AgentRunner::Vysledek> outcome(const AgentAdapter& adapter, Prubeh prubeh) {
    const auto& vysledek = prubeh.vysledek;
    auto toolFailed = [&adapter](Sentence message) {
        return fail(TalkSpanError{TalkSpanError::ToolFailed{adapter.id(), std::move(message)}});
    };
    if (vysledek.zruseno) return fail(TalkSpanError{TalkSpanError::Cancelled{}});
    if (vysledek.vyprselCas) return fail(TalkSpanError{TalkSpanError::TimedOut{timeLimit.count()}});
    if (prubeh.chyba) return toolFailed(*std::move(prubeh.chyba));
    if (vysledek.navratovyKod != 0) {
        auto words = trim(vysledek.chyby);
        return toolFailed(words.empty() ? "Proces skončil s kódem {kod}."_sentence(vysledek.navratovyKod)
                                        : Sentence(std::move(words)));
    }
    auto text = prubeh.zaver ? std::move(prubeh.zaver) : std::move(prubeh.posledniText);
    return AgentRunner::Vysledek{std::move(text).value_or("Nástroj nevrátil žádný text."_sentence.czech()),
                                 std::move(prubeh.relace)};
}

} // namespace

AgentRunner::AgentRunner(Services services, std::stop_token stop, Adaptery adaptery)
    : services_(services),
      stop_(stop),
      detekce_(services.launcher, services.clock, services.discovery, std::move(stop)),
      adaptery_(std::move(adaptery)) {}

AgentRunner::~AgentRunner() = default;

std::shared_ptr<const AgentAdapter> AgentRunner::adapter(const std::string& nastroj) const {
    auto found = adaptery_.find(nastroj);
    return found == adaptery_.end() ? nullptr : found->second;
}

Task<AgentStatus> AgentRunner::zjisti(std::string nastroj) {
    requireMainThread();
    auto known = adapter(nastroj);
    if (!known) co_return AgentStatus{false, {}, {}, "Neznámý nástroj."_sentence};
    co_return co_await detekce_.zjisti(std::move(known), {});
}

Task<Result<AgentRunner::Vysledek>> AgentRunner::spust(Assignment assignment, Posluchac posluchac) {
    requireMainThread();
    CO_CHECK(checkFree());
    CO_TRY(auto, foundAgent, co_await prepare(assignment));
    // Another task may have begun during the preparation.
    CO_CHECK(checkFree());
    bezici_ = std::make_shared<Bezici>(assignment.requestID, assignment.workItemID, assignment.nastroj,
                                       services_.clock.now());
    auto vysledek = co_await carryOut(std::move(foundAgent), std::move(assignment), std::move(posluchac));
    bezici_.reset();
    co_return vysledek;
}

Result<void> AgentRunner::checkFree() const {
    if (bezici_) return fail(Chyba{Chyba::Zaneprazdneno{bezici_->nastroj}});
    return {};
}

Result<void> AgentRunner::checkNotStopped(const std::stop_token& cancellation) const {
    if (stop_.stop_requested() || cancellation.stop_requested())
        return fail(TalkSpanError{TalkSpanError::Cancelled{}});
    return {};
}

Result<void> AgentRunner::overStart(const Assignment& assignment) const {
    CHECK(checkNotStopped(assignment.cancellation));
    if (!assignment.isAllowed()) return fail(Chyba{Chyba::FolderNoLongerAllowed{assignment.slozka}});
    return {};
}

Task<Result<AgentRunner::FoundAgent>> AgentRunner::prepare(Assignment assignment) {
    const auto& nastroj = assignment.nastroj;
    const auto& slozka = assignment.slozka;
    auto known = adapter(nastroj);
    if (!known) co_return fail(Chyba{Chyba::NeznamyNastroj{nastroj}});
    if (trim(assignment.instrukce).empty()) co_return fail(Chyba{Chyba::PrazdnaInstrukce{}});
    if (!co_await runOn(services_.workers, [&slozka] { return paths::isFolder(slozka); }))
        co_return fail(Chyba{Chyba::SlozkaNeexistuje{slozka}});
    auto status = co_await detekce_.zjisti(known, assignment.cancellation);
    CO_CHECK(checkNotStopped(assignment.cancellation));
    auto found = status.installed ? co_await services_.discovery.najdiBinarku(known->jmenaBinarky())
                                  : std::optional<ProgramDiscovery::FoundProgram>{};
    if (!found)
        co_return fail(Chyba{Chyba::Nenainstalovano{
            std::move(status.problem).value_or("Nástroj {nastroj} není nainstalovaný."_sentence(nastroj))}});
    co_return FoundAgent{std::move(known), std::move(found->binary)};
}

Task<Result<AgentRunner::Vysledek>> AgentRunner::carryOut(FoundAgent foundAgent, Assignment assignment,
                                                          Posluchac posluchac) {
    const auto adapter = foundAgent.adapter;
    const auto key = assignment.nastroj + ":" + assignment.slozka;
    if (auto known = relace_.find(key); known != relace_.end()) assignment.relace = known->second;
    assignment.relace = SessionId::usable(std::move(assignment.relace));
    auto progressQueue = std::make_shared<ProgressQueue>(services_.main, std::move(posluchac), bezici_);
    auto prubeh = co_await attempt(foundAgent, assignment, progressQueue);
    if (prubeh && prubeh->navazaniSelhalo) {
        relace_.erase(key);
        progressQueue->progressItem(
            {.relace = {}, .prubeh = "Předchozí relace už neexistuje, zakládám novou."});
        assignment.relace.reset();
        prubeh = co_await attempt(std::move(foundAgent), std::move(assignment), progressQueue);
    }
    if (!prubeh) co_return fail(prubeh.error());
    if (prubeh->relace) relace_.insert_or_assign(key, *prubeh->relace);
    co_return outcome(*adapter, *std::move(prubeh));
}

Task<Result<Prubeh>> AgentRunner::attempt(FoundAgent foundAgent, Assignment assignment,
                                          std::shared_ptr<ProgressQueue> progressQueue) {
    const bool isResumed = assignment.relace.has_value();
    OutsideProgram program{.binary = std::move(foundAgent.binary),
                           .args =
                               foundAgent.adapter->argumenty(std::move(assignment.instrukce),
                                                             assignment.slozka, std::move(assignment.relace)),
                           .cwd = assignment.slozka,
                           .env = co_await services_.discovery.prostrediNastroju()};
    CO_CHECK(overStart(assignment));
    CO_TRY(auto, prubeh,
           co_await runProgram(foundAgent.adapter, std::move(program), std::move(progressQueue)));
    prubeh.navazaniSelhalo = isResumed && isSessionGone(*foundAgent.adapter, prubeh.vysledek);
    co_return prubeh;
}

Task<Result<Prubeh>> AgentRunner::runProgram(std::shared_ptr<const AgentAdapter> adapter,
                                             OutsideProgram program,
                                             std::shared_ptr<ProgressQueue> progressQueue) {
    auto proces = std::make_shared<ProcessRunner>(services_.launcher, services_.clock);
    auto collector = std::make_shared<SberatelZprav>();
    std::stop_callback cancel(stop_, [&proces] { proces->zrusit(); });
    proces_ = proces;
    auto vysledek = co_await proces->spustit(std::move(program), timeLimit,
                                             follow(adapter, collector, progressQueue, proces), capture);
    proces_.reset();
    if (!vysledek) co_return fail(vysledek.error());
    co_return collector->prubeh(*std::move(vysledek));
}

void AgentRunner::requireMainThread() const {
    require(services_.main.isCurrent(), "agents are run on the main thread");
}

const AgentRunner::Bezici* AgentRunner::bezici() const {
    return bezici_.get();
}

bool AgentRunner::zrus() {
    return proces_ && proces_->zrusit();
}

} // namespace morvex
