#pragma once

#include "foundation/Signal.h"
#include "foundation/Task.h"
#include "shared/base/Error.h"

#include <memory>
#include <string>
#include <vector>

namespace morvex {

class Bdelost;
struct CompanionServices;
struct CompanionState;
struct FeatureContext;
class MacIntegrationSettings;
class PairingFlow;
class Schvalovani;
class ToolGate;

/// This computer's side of the assistant without its features: the keys, the pairing, the link to the phone,
/// the gate in front of the tools. It brings the link up and down, and tells the features what happens. Main
/// thread only.
///
/// Order of calls: the constructor; the features, made from `context`; `spustit` once; at the very end
/// `ukoncit`, awaited before the features go, and after them this object.
class Companion {
  public:
    explicit Companion(CompanionServices services);
    ~Companion();
    Companion(const Companion&) = delete;
    Companion& operator=(const Companion&) = delete;

    [[nodiscard]] FeatureContext& context();

    /// Loads what the vault holds: the identity (or makes one), what the features keep there, and the peer;
    /// and connects when there is a peer. Where a keyring stays locked or the identity cannot be kept, it may
    /// be tried again by `zkusitZnovu`.
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
    /// Has the features look again for what they need, then sends the status.
    Task<void> obnovitSluzby();
    /// The same in the background, for a button.
    void obnovit();

    /// Kept in the user defaults on every changing write.
    void setRelayAdresa(const std::string& adresa);
    /// What a person typed. Fails with `RelayAddressRefused`, and what was set stays.
    Result<void> zvolitRelay(const std::string& adresa);

    /// For reading and watching; this object and its parts alone write.
    [[nodiscard]] CompanionState& stav();
    [[nodiscard]] MacIntegrationSettings& integrations();
    [[nodiscard]] Schvalovani& schvalovani();
    [[nodiscard]] Bdelost& bdelost();
    [[nodiscard]] PairingFlow& parovani();
    [[nodiscard]] ToolGate& nastroje();

  private:
    struct Parts;

    void installCallbacks();
    /// The phone is not paired any more: it is forgotten, and what it has begun ends.
    void opustitTelefon();
    void zapomenoutNeplatny();
    Task<void> poZmeneSite();
    void usnout();
    Task<void> usnoutPoOdpojeni();

    std::unique_ptr<Parts> parts_;
    bool sitSeMeni_ = false; ///< a change of the network was told less than a second ago
    bool konci_ = false;     ///< nothing new is connected any more
    std::vector<Connection> connections_;
};

} // namespace morvex
