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

/// Brings a phone in: makes a pair at the relay, shows its QR code, waits for the phone's hello, and keeps
/// the peer once the user has found the two numbers equal. Main thread only.
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
        OwnKeys& klice;
    };

    /// What the flow does to the link to the phone that was paired before.
    struct Link {
        std::function<void()> pripojit;
        std::function<void()> odpojit;
        /// The phone is forgotten, and what it has begun ends.
        std::function<void()> opustit;
    };

    PairingFlow(Services services, CompanionState& state, Link link);

    /// Without the keys of this computer it loads them first.
    void zacitParovani();

    /// A pairing waits for the keys of this computer; its state is `necinne` meanwhile.
    [[nodiscard]] bool cekaNaKlice() const { return cekaNaKlice_; }

    /// "Souhlasí" under this number. Nothing when the number on screen has become another one meanwhile.
    void potvrditCislo(const std::string& cislo);
    /// "Neshoduje se"
    void odmitnoutCislo();
    /// "Zrušit"
    void zrusitParovani();
    /// "Odpojit telefon": forgets the phone at once, and revokes the pair at the relay, whatever that says.
    void odvolat();

    /// The attempt that the link of the pairing waits for begins now.
    void zkusitHned();

    /// For the end of the program: no answer that is still on its way changes anything any more.
    void ukoncit();

  private:
    [[nodiscard]] const std::shared_ptr<const DeviceIdentity>& identita() const {
        return services_.klice.identita();
    }

    Task<void> nacistAZacit(std::uint64_t generation);
    Task<void> zalozit(RelayAddress address, std::uint64_t generation);
    void listenFor(const RelayAddress& address, const PairID& pair);
    Task<void> listen(std::shared_ptr<RelayLink> link, std::string relayURL, PairID pair,
                      std::stop_token stop);
    /// Notes whether the phone that has introduced itself is still there.
    void sledovat(const RelayLink::Udalost& event);
    void prijmout(const Envelope& envelope, const std::string& relayURL);
    Task<void> ulozit(PairedPeer peer, std::uint64_t generation);
    Task<void> zapomenout(RelayAddress address, PairedPeer protejsek);
    /// Stops the pairing link in the background.
    void zastavit();
    void selhat(Sentence text);

    Services services_;
    CompanionState& state_;
    Link link_;
    RelayParovani relay_;
    std::shared_ptr<RelayLink> parovaci_;
    std::unique_ptr<TaskScope> parovaciPosluchac_;
    std::optional<PairedPeer> rozdelany_; ///< waits for the word about its number
    bool cekaNaKlice_ = false;
    bool uklada_ = false;
    bool konci_ = false;
    std::uint64_t generation_ = 0; ///< tells a late answer of an abandoned pairing
};

} // namespace morvex
