#include "app/companion/OwnKeys.h"

#include "app/companion/NahraditPar.h"
#include "shared-apple/KeychainChyba.h"
#include "shared-apple/OwnIdentity.h"
#include "shared/base/Try.h"

#include <chrono>
#include <optional>
#include <utility>

namespace morvex {

namespace {

/// Time between a change that the vault refused and the next attempt.
constexpr Clock::Duration vaultRetry = std::chrono::seconds(5);
/// The same if each attempt may ask a person for the password of the keyring.
constexpr Clock::Duration lockedRetry = std::chrono::hours(1);

} // namespace

void OwnKeys::zkusitZnovu() {
    if (jsouTu()) return;
    services_.vault.stopAsking();
    if (!std::exchange(nactouSeZnovu_, true)) services_.scope.spawn(nacistZnovu());
}

Task<void> OwnKeys::nacistZnovu() {
    (void)co_await nacist();
}

Task<Result<void>> OwnKeys::nacist() {
    const auto turn = co_await nacitani_.take();
    nactouSeZnovu_ = false;
    if (jsouTu() || konci_) co_return Result<void>{};
    state_.klice = StavKlicu{};
    state_.potiz = std::nullopt;
    if (!identita_) {
        CO_CHECK(co_await nactiIdentitu());
        co_await next_.identityIsThere();
    }
    CO_TRY(const bool, jeNacteny, co_await nactiProtejsek());
    state_.klice = StavKlicu{StavKlicu::Pripad::jsou};
    if (jeNacteny) next_.peerIsRead();
    co_return Result<void>{};
}

Task<Result<void>> OwnKeys::nactiIdentitu() {
    auto* uloziste = &services_.uloziste;
    auto loaded = co_await runOn(services_.vaultThread, [uloziste] { return ownIdentity(*uloziste); });
    if (!loaded) co_return fail(nejsou(loaded.error()));
    identita_ = *std::move(loaded);
    state_.identifikator = identita_->deviceID().rawValue;
    auto* vault = &services_.vault;
    state_.kliceJsouVSouborech = co_await runOn(
        services_.vaultThread, [vault] { return vault->place() == SecretVault::Place::privateFiles; });
    co_return Result<void>{};
}

Task<Result<bool>> OwnKeys::nactiProtejsek() {
    auto* uloziste = &services_.uloziste;
    auto loaded = co_await runOn(services_.vaultThread, [uloziste] { return uloziste->nactiProtejsek(); });
    if (!loaded && (konci_ || jeZamceno(loaded.error()))) co_return fail(nejsou(loaded.error()));
    if (!loaded) {
        neplatne(loaded.error());
        co_return false;
    }
    state_.protejsek = *std::move(loaded);
    if (!state_.protejsek.value()) state_.dostupnost = MacAvailability{MacAvailability::Nesparovano{}};
    co_return true;
}

void OwnKeys::neplatne(const Error& error) {
    state_.dostupnost = MacAvailability{MacAvailability::NeplatneParovani{error.popis()}};
    state_.potiz = error.popis();
}

Error OwnKeys::nejsou(const Error& error) {
    if (konci_) return error;
    if (jeZamceno(error)) {
        state_.dostupnost = MacAvailability{MacAvailability::Preruseno{klicenkaZamcena}};
        state_.potiz = klicenkaZamcenaCele;
    } else {
        neplatne(error);
    }
    state_.klice = StavKlicu{StavKlicu::Pripad::nejsou, *state_.potiz.value()};
    return TextError{state_.klice.value().duvod};
}

Task<Result<void>> OwnKeys::ulozit(PairedPeer peer) {
    auto* uloziste = &services_.uloziste;
    auto saved =
        co_await runOn(services_.vaultThread, [uloziste, &peer] { return uloziste->ulozProtejsek(peer); });
    if (saved) retryNow();
    co_return saved;
}

Task<void> OwnKeys::zapomenout(PairedPeer peer) {
    return nahradit(std::move(peer), [](const Error& proc) {
        return "Odpojení telefonu se nepodařilo uložit: {duvod}"_sentence(proc.popis());
    });
}

Task<void> OwnKeys::vratit(PairedPeer odmitnuty) {
    return nahradit(std::move(odmitnuty), [](const Error& proc) {
        return "Zrušené párování se nepodařilo smazat: {duvod}"_sentence(proc.popis());
    });
}

Task<void> OwnKeys::nahradit(PairedPeer peer, Sentence (*neslo)(const Error& proc)) {
    auto* uloziste = &services_.uloziste;
    const auto number = ++lastNumber_;
    for (;;) {
        const bool jePosledni = konci_;
        auto done = co_await runOn(services_.vaultThread, [uloziste, &peer, ted = state_.protejsek.value()] {
            return nahraditPar(*uloziste, peer, ted);
        });
        if (done) break;
        unfinished_.insert_or_assign(number, neslo(done.error()));
        tellUnfinished();
        if (jePosledni) co_return;
        const auto pause = jeZamceno(done.error()) ? lockedRetry : vaultRetry;
        (void)co_await sleepFor(services_.clock, pause, pauses_.get_token());
    }
    unfinished_.erase(number);
    tellUnfinished();
    retryNow();
}

void OwnKeys::retryNow() {
    if (!konci_) std::exchange(pauses_, {}).request_stop();
}

void OwnKeys::tellUnfinished() {
    if (unfinished_.empty())
        state_.potizTrezoru = std::nullopt;
    else
        state_.potizTrezoru = unfinished_.rbegin()->second;
}

void OwnKeys::ukoncit() {
    konci_ = true;
    services_.vault.end();
    pauses_.request_stop();
}

} // namespace morvex
