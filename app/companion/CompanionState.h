#pragma once

#include "app/companion/StavParovani.h"
#include "foundation/Clock.h"
#include "shared/wire/MacAvailability.h"
#include "shared/wire/PairedPeer.h"

#include <QProperty>

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace morvex {

/// What the words of `dostupnost` call the other device.
inline constexpr std::string_view peerName = "Telefon";

/// "Další pokus za 20 s", with `left` until it.
inline std::string popisDalsihoPokusu(Clock::Duration left) {
    return "Další pokus za " + std::to_string(std::chrono::ceil<std::chrono::seconds>(left).count()) + " s";
}

/// How far this computer's keys have come on their way from the vault.
struct StavKlicu {
    enum class Pripad { nacitaji, jsou, nejsou };
    Pripad pripad = Pripad::nacitaji;
    std::string duvod = {}; ///< why they are not there
    bool operator==(const StavKlicu&) const = default;
};

/// Beside a keyring that stays locked.
inline constexpr const char* klicenkaZamcena = "Klíčenka zůstala zamčená.";
inline constexpr const char* klicenkaZamcenaCele =
    "Klíčenka zůstala zamčená. Jsou v ní klíče tohoto počítače, bez nich se telefon nepřipojí.";
inline constexpr const char* cekamNaKlice = "Čekám na klíče tohoto počítače…";
inline constexpr const char* odemkniKlicenku =
    "Čekám na klíče tohoto počítače. Pokud se klíčenka ptá na heslo, odemkni ji.";
inline constexpr const char* kliceVSouborech =
    "Klíče leží v souborech, které smí číst jen tvůj účet, protože tu není klíčenka.";

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
    QProperty<std::optional<std::string>> potiz;
    /// Why the vault still holds a phone that is paired no more.
    QProperty<std::optional<std::string>> potizTrezoru;
    /// Why the settings could not be read or saved.
    QProperty<std::optional<std::string>> potizNastaveni;
    QProperty<std::string> relayAdresa;
    /// How many looks for what is there are under way.
    QProperty<int> zjistovani{0};
    QProperty<bool> postaDostupna{false};

    [[nodiscard]] bool nacitajiSeKlice() const { return klice.value().pripad == StavKlicu::Pripad::nacitaji; }

    /// What is said of the link; before the keys are there nobody knows of a phone.
    [[nodiscard]] std::string popisSpojeni(Date now) const {
        return nacitajiSeKlice() ? cekamNaKlice : dostupnost.value().popis(peerName, now);
    }
};

} // namespace morvex
