#pragma once

#include "app/companion/StavParovani.h"
#include "foundation/Clock.h"
#include "shared/base/Sentence.h"
#include "shared/wire/MacAvailability.h"
#include "shared/wire/PairedPeer.h"

#include <QProperty>

#include <chrono>
#include <optional>
#include <string>

namespace morvex {

/// "Další pokus za 20 s"; `left` is the time until then.
inline Sentence nextAttemptText(Clock::Duration left) {
    return "Další pokus za {vterin} s"_sentence(std::chrono::ceil<std::chrono::seconds>(left).count());
}

/// Whether this computer's keys have been loaded from the vault.
struct KeysState {
    enum class Case { loading, present, missing };
    Case kind = Case::loading;
    Sentence duvod = {}; ///< why the keys could not be loaded
    bool operator==(const KeysState&) const = default;
};

/// Texts about the keys: the keyring stays locked, is still being asked, or does not exist.
inline constexpr auto keychainLocked = "Klíčenka zůstala zamčená."_sentence;
inline constexpr auto keychainLockedExplained =
    "Klíčenka zůstala zamčená. Jsou v ní klíče tohoto počítače, bez nich se telefon nepřipojí."_sentence;
inline constexpr auto waitingForKeys = "Čekám na klíče tohoto počítače…"_sentence;
inline constexpr auto unlockKeychain =
    "Čekám na klíče tohoto počítače. Pokud se klíčenka ptá na heslo, odemkni ji."_sentence;
inline constexpr auto keysInFiles =
    "Klíče leží v souborech, které smí číst jen tvůj účet, protože tu není klíčenka."_sentence;

/// What views watch. Main thread only. Writing an equal value notifies nobody.
struct CompanionState {
    QProperty<MacAvailability> dostupnost{MacAvailability{MacAvailability::Nesparovano{}}};
    QProperty<StavParovani> parovani;
    QProperty<KeysState> keys;
    /// The vault stores the keys in files instead of a keyring.
    QProperty<bool> areKeysInFiles{false};
    QProperty<std::optional<PairedPeer>> protejsek;
    /// The phone whose number is being compared, or was just confirmed, has left and has not had a session
    /// yet.
    QProperty<bool> phoneHasLeft{false};
    /// When the link tries to connect again, counted from the boot of the computer; empty unless it waits.
    QProperty<std::optional<Clock::Duration>> nextAttempt;
    /// Identifier of this device; empty until its identity has been loaded.
    QProperty<std::string> identifier;
    /// The last problem to show to the user.
    QProperty<std::optional<Sentence>> potiz;
    /// Why the vault still holds a phone that is no longer paired.
    QProperty<std::optional<Sentence>> vaultTrouble;
    /// Why the settings could not be read or saved.
    QProperty<std::optional<Sentence>> settingsTrouble;
    QProperty<std::string> relayAdresa;
    /// How many refreshes of the features are running.
    QProperty<int> detectionsUnderWay{0};

    [[nodiscard]] bool areKeysLoading() const { return keys.value().kind == KeysState::Case::loading; }

    /// Describes the link. Until the keys are loaded it is not known whether there is a phone.
    [[nodiscard]] Sentence linkText(Date now) const {
        return areKeysLoading() ? Sentence(waitingForKeys) : dostupnost.value().popis(DeviceRole::phone, now);
    }
};

} // namespace morvex
