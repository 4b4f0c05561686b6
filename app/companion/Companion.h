#pragma once

#include "app/agents/AgentRunner.h"
#include "app/agents/AgentTools.h"
#include "app/agents/HistorieAgentu.h"
#include "app/approvals/Schvalovani.h"
#include "app/companion/Bdelost.h"
#include "app/companion/CompanionServices.h"
#include "app/companion/CompanionState.h"
#include "app/companion/NotesSync.h"
#include "app/companion/PairingFlow.h"
#include "app/companion/PhoneInbox.h"
#include "app/companion/PhoneLink.h"
#include "app/companion/StatusReport.h"
#include "app/companion/TaskSync.h"
#include "app/companion/ToolGate.h"
#include "app/customapps/MacCustomAppsService.h"
#include "app/execution/FileTools.h"
#include "app/execution/Slozky.h"
#include "app/execution/TerminalTools.h"
#include "app/keychain/Keychain.h"
#include "app/personal/NotesTools.h"
#include "app/personal/PoznamkyStore.h"
#include "app/personal/SouhrnyStore.h"
#include "app/programs/ProgramDiscovery.h"
#include "app/settings/MacIntegrationSettings.h"
#include "app/voice/MacVoiceController.h"
#include "foundation/Signal.h"
#include "foundation/TaskScope.h"
#include "foundation/Turns.h"

#include <memory>
#include <string>

namespace morvex {

/// The one object that owns every service of this computer's side. It brings the link to the phone up and
/// down and joins the parts: what the link reports, what the phone asks, what views show. Main thread only.
///
/// Order of calls: the constructor; `spustit` once; at the very end `ukoncit`, awaited before destruction.
class Companion {
  public:
    explicit Companion(CompanionServices services);
    ~Companion();
    Companion(const Companion&) = delete;
    Companion& operator=(const Companion&) = delete;

    /// Loads what the vault holds: the identity (or makes one), the assistant's secrets and the peer; and
    /// connects when there is a peer. Where the vault refuses the identity, it may be tried again by
    /// `zkusitZnovu`.
    Task<void> spustit();

    /// Takes back the question that a keyring has open, and loads the keys again. Nothing once they are
    /// there.
    void zkusitZnovu();

    /// Ends the link and all that runs.
    Task<void> ukoncit();

    /// Builds the link from identity and peer; nothing when one of them is absent.
    void pripojit();
    /// Takes the link down in the background. `dostupnost` stays as it is.
    void odpojit();

    /// The link that waits for its next attempt tries now, and so does the one of a pairing.
    void zkusitHned();

    /// Tells the phone what this computer can do. Ends quietly without a link.
    Task<void> poslatStav();
    /// Looks for the agents again, then sends the status.
    Task<void> obnovitSluzby();
    /// The same in the background, for a button.
    void obnovit();

    /// Kept in the user defaults on every changing write.
    void setRelayAdresa(const std::string& adresa);
    /// What a person typed. Fails with `RelayAddressRefused`, and what was set stays.
    Result<void> zvolitRelay(const std::string& adresa);

    /// For reading and watching; this object and its parts alone write.
    [[nodiscard]] CompanionState& stav() { return state_; }

    [[nodiscard]] Slozky& slozky() { return *slozky_; }

    [[nodiscard]] MacIntegrationSettings& integrations() { return integrations_; }

    [[nodiscard]] MacCustomAppsService& customApps() { return customApps_; }

    [[nodiscard]] MacVoiceController& hlas() { return hlas_; }

    [[nodiscard]] Schvalovani& schvalovani() { return schvalovani_; }

    [[nodiscard]] Bdelost& bdelost() { return bdelost_; }

    [[nodiscard]] PoznamkyStore& poznamky() { return poznamky_; }

    [[nodiscard]] SouhrnyStore& souhrny() { return souhrny_; }

    [[nodiscard]] HistorieAgentu& historieAgentu() { return *historieAgentu_; }

    [[nodiscard]] const AgentRunner& agenti() const { return agenti_; }

    /// Asks the agent to end if it works on this task, or is about to.
    bool zastavitUkol(const Uuid& workItemID) { return agentTools_.zastavit(workItemID); }

    /// The work item of an agent's task that is on its way, from its acceptance to its end.
    [[nodiscard]] std::optional<Uuid> uloha() const { return agentTools_.uloha(); }

    [[nodiscard]] PairingFlow& parovani() { return parovani_; }

    [[nodiscard]] ToolGate& nastroje() { return nastroje_; }

  private:
    void addTools();
    void addAgentTools();
    void installCallbacks();
    Task<Result<void>> nacistKlice();
    Task<void> nacistZnovu();
    Task<Result<void>> nactiIdentitu();
    /// Whether it could be read. Fails where the vault is locked.
    Task<Result<bool>> nactiProtejsek();
    void neplatne(const Error& error);
    void kliceNejsou(const Error& error);
    /// The phone is not paired any more: it is forgotten, and what it has begun ends.
    void opustitTelefon();
    Task<void> zapomenoutNeplatny();
    Task<void> zpracovat(SecureLink::Udalost udalost);
    Task<void> zpracovat(SecureLink::Stav udalost);
    Task<void> zpracovat(SecureLink::Zprava udalost);
    Task<void> zpracovat(SecureLink::Chyba udalost);
    Task<void> zpracovat(SecureLink::Pripraveno udalost);
    Task<void> poZmeneSite();
    void usnout();
    Task<void> usnoutPoOdpojeni();
    /// What the phone may have missed, over this link.
    Task<void> doplnitPoPripojeni(std::shared_ptr<SecureLink> link);
    Task<void> zjistit(std::string_view nastroj, QProperty<AgentStatus>* stav);
    Task<ToolOutcome> stavNastroj(ToolCall call);
    Task<void> poslatZadost(ApprovalRequest zadost);

    [[nodiscard]] Saving saving() const { return {services_.main, services_.recordsThread, clock()}; }

    [[nodiscard]] Clock& clock() const { return services_.link.relay.clock; }

    [[nodiscard]] Random& random() const { return services_.link.random; }

    // Each is made from those above it and goes before them: the order is part of the design.
    CompanionServices services_;
    CompanionState state_;
    Turns nacitani_; ///< of the keys
    TaskScope scope_;
    std::unique_ptr<Slozky> slozky_;
    Schvalovani schvalovani_;
    Bdelost bdelost_;
    PoznamkyStore poznamky_;
    SouhrnyStore souhrny_;
    Keychain keychain_;
    MacCustomAppsService customApps_;
    std::unique_ptr<HistorieAgentu> historieAgentu_;
    MacIntegrationSettings integrations_;
    MacVoiceController hlas_;
    NotesTools notesTools_;
    FileTools fileTools_;
    ProgramDiscovery programs_;
    TerminalTools terminalTools_;
    AgentRunner agenti_;
    ToolTable table_;
    ToolGate nastroje_;
    StatusReport report_;
    PhoneLink phoneLink_;
    NotesSync poznamkyTelefonu_;
    TaskSync ukolyTelefonu_;
    AgentTools agentTools_;
    PhoneInbox dorucene_;
    PairingFlow parovani_;
    std::shared_ptr<const DeviceIdentity> identita_;
    bool nactouSeZnovu_ = false; ///< another load of the keys waits for its turn
    bool sitSeMeni_ = false;     ///< a change of the network was told less than a second ago
    bool konci_ = false;         ///< nothing new is connected any more
    std::vector<Connection> connections_;
};

} // namespace morvex
