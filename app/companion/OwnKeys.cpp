#include "app/companion/OwnKeys.h"

#include "app/companion/ReplacePeer.h"
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

void OwnKeys::tryAgain() {
    if (arePresent()) return;
    services_.vault.stopAsking();
    if (!std::exchange(willLoadAgain_, true)) services_.scope.spawn(loadAgain());
}

Task<void> OwnKeys::loadAgain() {
    (void)co_await load();
}

Task<Result<void>> OwnKeys::load() {
    CO_TRY(const bool, isPeerRead, co_await loadMissing());
    // Nobody who asks for the keys meanwhile waits for this.
    if (isPeerRead) co_await next_.peerIsRead();
    co_return Result<void>{};
}

Task<Result<bool>> OwnKeys::loadMissing() {
    const auto turn = co_await loadTurns_.take();
    willLoadAgain_ = false;
    if (arePresent() || isEnding_) co_return false;
    state_.keys = KeysState{};
    state_.potiz = std::nullopt;
    if (!identita_) {
        CO_CHECK(co_await nactiIdentitu());
        co_await next_.identityIsThere();
    }
    CO_TRY(const bool, isLoaded, co_await nactiProtejsek());
    state_.keys = KeysState{KeysState::Case::present};
    co_return isLoaded;
}

Task<Result<void>> OwnKeys::nactiIdentitu() {
    auto* uloziste = &services_.uloziste;
    auto loaded = co_await runOn(services_.vaultThread, [uloziste] { return ownIdentity(*uloziste); });
    if (!loaded) co_return fail(missing(loaded.error()));
    identita_ = *std::move(loaded);
    state_.identifier = identita_->deviceID().rawValue;
    auto* vault = &services_.vault;
    state_.areKeysInFiles = co_await runOn(
        services_.vaultThread, [vault] { return vault->place() == SecretVault::Place::privateFiles; });
    co_return Result<void>{};
}

Task<Result<bool>> OwnKeys::nactiProtejsek() {
    auto* uloziste = &services_.uloziste;
    auto loaded = co_await runOn(services_.vaultThread, [uloziste] { return uloziste->nactiProtejsek(); });
    if (!loaded && (isEnding_ || isLocked(loaded.error()))) co_return fail(missing(loaded.error()));
    if (!loaded) {
        declareInvalid(loaded.error());
        co_return false;
    }
    state_.protejsek = *std::move(loaded);
    if (!state_.protejsek.value()) state_.dostupnost = MacAvailability{MacAvailability::Nesparovano{}};
    co_return true;
}

void OwnKeys::declareInvalid(const Error& error) {
    state_.dostupnost = MacAvailability{MacAvailability::NeplatneParovani{error.popis()}};
    state_.potiz = error.popis();
}

Error OwnKeys::missing(const Error& error) {
    if (isEnding_) return error;
    if (isLocked(error)) {
        state_.dostupnost = MacAvailability{MacAvailability::Preruseno{keychainLocked}};
        state_.potiz = keychainLockedExplained;
    } else {
        declareInvalid(error);
    }
    state_.keys = KeysState{KeysState::Case::missing, *state_.potiz.value()};
    return TextError{state_.keys.value().duvod};
}

Task<Result<void>> OwnKeys::ulozit(PairedPeer peer) {
    auto* uloziste = &services_.uloziste;
    auto saved =
        co_await runOn(services_.vaultThread, [uloziste, &peer] { return uloziste->ulozProtejsek(peer); });
    if (saved) retryNow();
    co_return saved;
}

Task<void> OwnKeys::forgetPhone(PairedPeer peer) {
    return replaceStored(std::move(peer), [](const Error& proc) {
        return "Odpojení telefonu se nepodařilo uložit: {duvod}"_sentence(proc.popis());
    });
}

Task<void> OwnKeys::putBack(PairedPeer refused) {
    return replaceStored(std::move(refused), [](const Error& proc) {
        return "Zrušené párování se nepodařilo smazat: {duvod}"_sentence(proc.popis());
    });
}

Task<void> OwnKeys::replaceStored(PairedPeer peer, Sentence (*failureText)(const Error& proc)) {
    auto* uloziste = &services_.uloziste;
    const auto number = ++lastNumber_;
    for (;;) {
        const bool isLast = isEnding_;
        auto done =
            co_await runOn(services_.vaultThread, [uloziste, &peer, replacement = state_.protejsek.value()] {
                return replacePeer(*uloziste, peer, replacement);
            });
        if (done) break;
        unfinished_.insert_or_assign(number, failureText(done.error()));
        tellUnfinished();
        if (isLast) co_return;
        const auto pause = isLocked(done.error()) ? lockedRetry : vaultRetry;
        (void)co_await sleepFor(services_.clock, pause, pauses_.get_token());
    }
    unfinished_.erase(number);
    tellUnfinished();
    retryNow();
}

void OwnKeys::retryNow() {
    if (!isEnding_) std::exchange(pauses_, {}).request_stop();
}

void OwnKeys::tellUnfinished() {
    if (unfinished_.empty())
        state_.vaultTrouble = std::nullopt;
    else
        state_.vaultTrouble = unfinished_.rbegin()->second;
}

void OwnKeys::shutDown() {
    isEnding_ = true;
    services_.vault.end();
    pauses_.request_stop();
}

} // namespace morvex
