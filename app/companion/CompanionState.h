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

/// "Další pokus za 20 s", with `left` until it.
inline Sentence popisDalsihoPokusu(Clock::Duration left) {
    return "Další pokus za {vterin} s"_sentence(std::chrono::ceil<std::chrono::seconds>(left).count());
}

/// How far this computer's keys have come on their way from the vault.
struct StavKlicu {
    enum class Pripad { nacitaji, jsou, nejsou };
    Pripad pripad = Pripad::nacitaji;
    Sentence duvod = {}; ///< why they are not there
    bool operator==(const StavKlicu&) const = default;
};

/// Beside a keyring that stays locked.
inline constexpr auto klicenkaZamcena = "Klíčenka zůstala zamčená."_sentence;
inline constexpr auto klicenkaZamcenaCele =
    "Klíčenka zůstala zamčená. Jsou v ní klíče tohoto počítače, bez nich se telefon nepřipojí."_sentence;
inline constexpr auto cekamNaKlice = "Čekám na klíče tohoto počítače…"_sentence;
inline constexpr auto odemkniKlicenku =
    "Čekám na klíče tohoto počítače. Pokud se klíčenka ptá na heslo, odemkni ji."_sentence;
inline constexpr auto kliceVSouborech =
    "Klíče leží v souborech, které smí číst jen tvůj účet, protože tu není klíčenka."_sentence;

/// What views watch. Main thread only; writing an equal value notifies nobody.
struct CompanionState {
    QProperty<MacAvailability> dostupnost{MacAvailability{MacAvailability::Nesparovano{}}};
    QProperty<StavParovani> parovani;
    QProperty<StavKlicu> klice;
    /// The vault is no keyring.
    QProperty<bool> kliceJsouVSouborech{false};
    QProperty<std::optional<PairedPeer>> protejsek;
    /// The phone whose number is compared, or that was just confirmed, has left and has had no session yet.
    QProperty<bool> telefonOdesel{false};
    /// When the link tries to connect again, since the start of the computer; nothing while it does not wait.
    QProperty<std::optional<Clock::Duration>> dalsiPokus;
    /// Identifier of this device; empty until its identity is there.
    QProperty<std::string> identifikator;
    /// The last problem for the user.
    QProperty<std::optional<Sentence>> potiz;
    /// Why the vault still holds a phone that is paired no more.
    QProperty<std::optional<Sentence>> potizTrezoru;
    /// Why the settings could not be read or saved.
    QProperty<std::optional<Sentence>> potizNastaveni;
    QProperty<std::string> relayAdresa;
    /// How many looks for what is there are under way.
    QProperty<int> zjistovani{0};
    QProperty<bool> postaDostupna{false};

    [[nodiscard]] bool nacitajiSeKlice() const { return klice.value().pripad == StavKlicu::Pripad::nacitaji; }

    /// What is said of the link; before the keys are there nobody knows of a phone.
    [[nodiscard]] Sentence popisSpojeni(Date now) const {
        return nacitajiSeKlice() ? Sentence(cekamNaKlice) : dostupnost.value().popis(DeviceRole::phone, now);
    }
};

} // namespace morvex
