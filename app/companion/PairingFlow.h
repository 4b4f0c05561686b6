#pragma once

#include "app/companion/CompanionState.h"
#include "app/companion/OwnKeys.h"
#include "foundation/TaskScope.h"
#include "shared-apple/RelayLink.h"
#include "shared-apple/RelayParovani.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace morvex {

/// Pairs a phone: creates a pair at the relay, shows its QR code, waits for the phone's hello, and stores the
/// peer once the user has confirmed that the two numbers are equal. Main thread only.
///
///     necinne -> zakladam -> cekamNaTelefon -> overCislo -> necinne
///     and from any of the middle ones to chyba, or back to necinne by zrusitParovani
class PairingFlow {
  public:
    struct Services {
        Executor& main;
        RelayLink::Services relay;
        HttpClient& http;
        TaskScope& scope;
        OwnKeys& keys;
    };

    /// Actions on the link to the phone that was paired before.
    struct Link {
        std::function<void()> pripojit;
        std::function<void()> odpojit;
        /// Forgets the phone and ends what it has begun.
        std::function<void()> abandon;
    };

    PairingFlow(Services services, CompanionState& state, Link link);

    /// Starts a pairing. If the keys of this computer are not loaded, loads them first.
    void zacitParovani();

    /// Whether a pairing waits for the keys of this computer; the state is `necinne` meanwhile.
    [[nodiscard]] bool awaitsKeys() const { return awaitsKeys_; }

    /// "Souhlasí" under this number. Does nothing if another number is on screen by now.
    void potvrditCislo(const std::string& cislo);
    /// "Neshoduje se"
    void odmitnoutCislo();
    /// "Zrušit"
    void zrusitParovani();
    /// "Odpojit telefon": forgets the phone at once and revokes the pair at the relay, whatever the relay
    /// answers.
    void odvolat();

    /// If the link of the pairing waits for its next attempt, the attempt begins now.
    void connectNow();

    /// For the end of the program: answers that arrive later change nothing.
    void shutDown();

  private:
    [[nodiscard]] const std::shared_ptr<const DeviceIdentity>& identita() const {
        return services_.keys.identita();
    }

    Task<void> loadAndBegin(std::uint64_t generation);
    Task<void> zalozit(RelayAddress address, std::uint64_t generation);
    void listenFor(const RelayAddress& address, const PairID& pair);
    Task<void> listen(std::shared_ptr<RelayLink> link, std::string relayURL, PairID pair,
                      std::stop_token stop);
    /// Notes whether the phone that has sent its hello is still connected.
    void follow(const RelayLink::Udalost& event);
    void prijmout(const Envelope& envelope, const std::string& relayURL);
    Task<void> ulozit(PairedPeer peer, std::uint64_t generation);
    Task<void> forgetPhone(RelayAddress address, PairedPeer protejsek);
    /// Stops the pairing link in the background.
    void zastavit();
    void failWith(Sentence text);

    Services services_;
    CompanionState& state_;
    Link link_;
    RelayParovani relay_;
    std::shared_ptr<RelayLink> parovaci_;
    std::unique_ptr<TaskScope> parovaciPosluchac_;
    std::optional<PairedPeer> rozdelany_; ///< the phone whose number the user has yet to confirm
    bool awaitsKeys_ = false;
    std::optional<std::uint64_t> pairingBeingSaved_; ///< the pairing whose phone is being stored
    bool isEnding_ = false;
    std::uint64_t generation_ = 0; ///< recognises late answers to an abandoned pairing
};

} // namespace morvex
