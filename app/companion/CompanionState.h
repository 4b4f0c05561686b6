#pragma once

#include "app/companion/StavParovani.h"
#include "foundation/Clock.h"
#include "shared/wire/MacAvailability.h"
#include "shared/wire/MacStatus.h"
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

/// What views watch. Main thread only; writing an equal value notifies nobody.
struct CompanionState {
    QProperty<MacAvailability> dostupnost{MacAvailability{MacAvailability::Nesparovano{}}};
    QProperty<StavParovani> parovani;
    QProperty<std::optional<PairedPeer>> protejsek;
    /// The phone whose number is compared, or that was just confirmed, has left and has had no session yet.
    QProperty<bool> telefonOdesel{false};
    /// When the link tries to connect again, since the start of the computer; nothing while it does not wait.
    QProperty<std::optional<Clock::Duration>> dalsiPokus;
    /// Identifier of this device; empty until its identity is there.
    QProperty<std::string> identifikator;
    /// The last problem for the user.
    QProperty<std::optional<std::string>> potiz;
    /// Why the settings could not be read or saved.
    QProperty<std::optional<std::string>> potizNastaveni;
    QProperty<std::string> relayAdresa;
    /// Stands as an agent's problem until the first look for it has ended.
    static constexpr const char* jesteNevim = "Zjišťuji…";
    QProperty<AgentStatus> stavClauda{AgentStatus{false, {}, {}, jesteNevim}};
    QProperty<AgentStatus> stavCodexu{AgentStatus{false, {}, {}, jesteNevim}};
    /// How many looks for what is there are under way.
    QProperty<int> zjistovani{0};
    QProperty<bool> postaDostupna{false};
};

} // namespace morvex
