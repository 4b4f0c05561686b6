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
constexpr Zachyt zachyt{.vystup = 0, .chyby = 64UL * 1024, .castChyb = Zachyt::Cast::konec};

/// Called on the thread that reads the output. The adapter and everything captured may outlive the runner.
NaRadek follow(std::shared_ptr<const AgentAdapter> adapter, std::shared_ptr<SberatelZprav> sberatel,
               std::shared_ptr<ProgressQueue> ohlasy, std::weak_ptr<ProcessRunner> proces) {
    return [adapter, sberatel, ohlasy, proces](std::string_view radek) {
        auto zprava = adapter->precti(radek);
        if (!zprava) return;
        zprava->relace = SessionId::usable(std::move(zprava->relace));
        ProgressQueue::Ohlas ohlas;
        if (sberatel->pridej(*zprava) == SberatelZprav::Relace::nova)
            ohlas.relace = std::move(zprava->relace);
        ohlas.prubeh = std::move(zprava->prubeh);
        if (ohlas.relace || ohlas.prubeh) ohlasy->pridej(std::move(ohlas));
        if (!zprava->chyba) return;
        if (auto running = proces.lock()) running->ukoncit();
    };
}

/// Only standard error decides, whatever ended the run.
bool isSessionGone(const AgentAdapter& adapter, const VysledekProcesu& vysledek) {
    bool failed = vysledek.navratovyKod != 0 || vysledek.zruseno || vysledek.vyprselCas;
    return failed && adapter.jeRelacePryc(vysledek.chyby);
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
    vyzadujHlavniVlakno();
    auto known = adapter(nastroj);
    if (!known) co_return AgentStatus{false, {}, {}, "Neznámý nástroj."_sentence};
    co_return co_await detekce_.zjisti(std::move(known), {});
}

Task<Result<AgentRunner::Vysledek>> AgentRunner::spust(Zadani zadani, Posluchac posluchac) {
    vyzadujHlavniVlakno();
    CO_CHECK(checkFree());
    CO_TRY(auto, nalezeno, co_await priprav(zadani));
    // Another task may have begun during the preparation.
    CO_CHECK(checkFree());
    bezici_ =
        std::make_shared<Bezici>(zadani.requestID, zadani.workItemID, zadani.nastroj, services_.clock.now());
    auto vysledek = co_await pracuj(std::move(nalezeno), std::move(zadani), std::move(posluchac));
    bezici_.reset();
    co_return vysledek;
}

Result<void> AgentRunner::checkFree() const {
    if (bezici_) return fail(Chyba{Chyba::Zaneprazdneno{bezici_->nastroj}});
    return {};
}

Result<void> AgentRunner::overNezastaveno(const std::stop_token& zastaveni) const {
    if (stop_.stop_requested() || zastaveni.stop_requested())
        return fail(TalkSpanError{TalkSpanError::Cancelled{}});
    return {};
}

Result<void> AgentRunner::overStart(const Zadani& zadani) const {
    CHECK(overNezastaveno(zadani.zastaveni));
    if (!zadani.jePovolena()) return fail(Chyba{Chyba::SlozkaUzNeniPovolena{zadani.slozka}});
    return {};
}

Task<Result<AgentRunner::Nalezeno>> AgentRunner::priprav(Zadani zadani) {
    const auto& nastroj = zadani.nastroj;
    const auto& slozka = zadani.slozka;
    auto known = adapter(nastroj);
    if (!known) co_return fail(Chyba{Chyba::NeznamyNastroj{nastroj}});
    if (trim(zadani.instrukce).empty()) co_return fail(Chyba{Chyba::PrazdnaInstrukce{}});
    if (!co_await runOn(services_.workers, [&slozka] { return paths::isFolder(slozka); }))
        co_return fail(Chyba{Chyba::SlozkaNeexistuje{slozka}});
    auto status = co_await detekce_.zjisti(known, zadani.zastaveni);
    CO_CHECK(overNezastaveno(zadani.zastaveni));
    auto found = status.installed ? co_await services_.discovery.najdiBinarku(known->jmenaBinarky())
                                  : std::optional<ProgramDiscovery::Nalez>{};
    if (!found)
        co_return fail(Chyba{Chyba::Nenainstalovano{
            std::move(status.problem).value_or("Nástroj {nastroj} není nainstalovaný."_sentence(nastroj))}});
    co_return Nalezeno{std::move(known), std::move(found->binarka)};
}

Task<Result<AgentRunner::Vysledek>> AgentRunner::pracuj(Nalezeno nalezeno, Zadani zadani,
                                                        Posluchac posluchac) {
    const auto adapter = nalezeno.adapter;
    const auto klic = zadani.nastroj + ":" + zadani.slozka;
    if (auto known = relace_.find(klic); known != relace_.end()) zadani.relace = known->second;
    zadani.relace = SessionId::usable(std::move(zadani.relace));
    auto ohlasy = std::make_shared<ProgressQueue>(services_.main, std::move(posluchac), bezici_);
    auto prubeh = co_await navaz(nalezeno, zadani, ohlasy);
    if (prubeh && prubeh->navazaniSelhalo) {
        relace_.erase(klic);
        ohlasy->ohlas({.relace = {}, .prubeh = "Předchozí relace už neexistuje, zakládám novou."});
        zadani.relace.reset();
        prubeh = co_await navaz(std::move(nalezeno), std::move(zadani), ohlasy);
    }
    if (!prubeh) co_return fail(prubeh.error());
    if (prubeh->relace) relace_.insert_or_assign(klic, *prubeh->relace);
    co_return outcome(*adapter, *std::move(prubeh));
}

Task<Result<Prubeh>> AgentRunner::navaz(Nalezeno nalezeno, Zadani zadani,
                                        std::shared_ptr<ProgressQueue> ohlasy) {
    const bool isResumed = zadani.relace.has_value();
    OutsideProgram program{.binary = std::move(nalezeno.binarka),
                           .args = nalezeno.adapter->argumenty(std::move(zadani.instrukce), zadani.slozka,
                                                               std::move(zadani.relace)),
                           .cwd = zadani.slozka,
                           .env = co_await services_.discovery.prostrediNastroju()};
    CO_CHECK(overStart(zadani));
    CO_TRY(auto, prubeh, co_await probehni(nalezeno.adapter, std::move(program), std::move(ohlasy)));
    prubeh.navazaniSelhalo = isResumed && isSessionGone(*nalezeno.adapter, prubeh.vysledek);
    co_return prubeh;
}

Task<Result<Prubeh>> AgentRunner::probehni(std::shared_ptr<const AgentAdapter> adapter,
                                           OutsideProgram program, std::shared_ptr<ProgressQueue> ohlasy) {
    auto proces = std::make_shared<ProcessRunner>(services_.launcher, services_.clock);
    auto sberatel = std::make_shared<SberatelZprav>();
    std::stop_callback cancel(stop_, [&proces] { proces->zrusit(); });
    proces_ = proces;
    auto vysledek = co_await proces->spustit(std::move(program), timeLimit,
                                             follow(adapter, sberatel, ohlasy, proces), zachyt);
    proces_.reset();
    if (!vysledek) co_return fail(vysledek.error());
    co_return sberatel->prubeh(*std::move(vysledek));
}

void AgentRunner::vyzadujHlavniVlakno() const {
    vyzaduj(services_.main.isCurrent(), "agents are run on the main thread");
}

const AgentRunner::Bezici* AgentRunner::bezici() const {
    return bezici_.get();
}

bool AgentRunner::zrus() {
    return proces_ && proces_->zrusit();
}

} // namespace morvex
