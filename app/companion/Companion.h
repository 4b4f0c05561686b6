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
/// Order of calls: construct it, make the features from `context`, call `spustit` once. At the very end await
/// `shutDown`, then destroy the features, then this object.
class Companion {
  public:
    explicit Companion(CompanionServices services);
    ~Companion();
    Companion(const Companion&) = delete;
    Companion& operator=(const Companion&) = delete;

    [[nodiscard]] FeatureContext& context();

    /// Loads the identity (or makes one), what the features keep in the vault, and the peer, and connects if
    /// there is a peer. If a keyring stays locked or the identity cannot be stored, `tryAgain` tries
    /// again.
    Task<void> spustit();

    /// Withdraws the question that a keyring has open and loads the keys again. Does nothing if the keys are
    /// already loaded.
    void tryAgain();

    /// Ends the link and all running tasks.
    Task<void> shutDown();

    /// Builds the link from identity and peer. Does nothing if one of them is missing.
    void pripojit();
    /// Takes the link down in the background. `dostupnost` stays as it is.
    void odpojit();

    /// Makes a link that waits for its next attempt try now; this includes the link of a pairing.
    void connectNow();

    /// Has the features look again for what they need, then sends the status.
    Task<void> obnovitSluzby();
    /// Like `obnovitSluzby`, in the background; for a button.
    void obnovit();

    /// Saves a changed address in the user defaults.
    void setRelayAdresa(const std::string& adresa);
    /// Takes an address that a person typed. Fails with `RelayAddressRefused`; the previous address then
    /// stays.
    Result<void> chooseRelay(const std::string& adresa);

    /// Views read and watch this; only this object and its parts write.
    [[nodiscard]] CompanionState& stav();
    [[nodiscard]] MacIntegrationSettings& integrations();
    [[nodiscard]] Schvalovani& schvalovani();
    [[nodiscard]] Bdelost& bdelost();
    [[nodiscard]] PairingFlow& parovani();
    [[nodiscard]] ToolGate& toolGate();

  private:
    struct Parts;

    void installCallbacks();
    /// Forgets the phone, because it is no longer paired, and ends what it has begun.
    void abandonPhone();
    void forgetInvalid();
    Task<void> afterNetworkChange();
    void fallAsleep();
    Task<void> fallAsleepOnceDisconnected();

    std::unique_ptr<Parts> parts_;
    bool isNetworkChanging_ = false; ///< the network reported a change less than a second ago
    bool isEnding_ = false;          ///< nothing may connect any more
    std::vector<Connection> connections_;
};

} // namespace morvex
