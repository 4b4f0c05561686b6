#pragma once

#include "app/companion/CompanionState.h"
#include "foundation/TaskScope.h"
#include "foundation/Turns.h"
#include "platform/ports/SecretVault.h"
#include "shared-apple/IdentityStore.h"
#include "shared/trust/DeviceIdentity.h"

#include <functional>
#include <memory>
#include <utility>

namespace morvex {

/// This computer's identity and the phone that it is paired with, on their way from the vault into the state.
/// Where the vault refuses, that is told there, and `zkusitZnovu` tries again. Main thread only.
class OwnKeys {
  public:
    /// All of it outlives this object.
    struct Services {
        Executor& vaultThread; ///< the vault may ask a person, and so block
        IdentityStore& uloziste;
        SecretVault& vault;
        TaskScope& scope;
    };

    /// What follows; both are called on the main thread.
    struct Next {
        std::function<Task<void>()> identityIsThere; ///< awaited before the phone is read
        std::function<void()> peerIsRead;            ///< there may be none
    };

    OwnKeys(Services services, CompanionState& state, Next next)
        : services_(services), state_(state), next_(std::move(next)) {}

    /// Null until it is there.
    [[nodiscard]] const std::shared_ptr<const DeviceIdentity>& identita() const { return identita_; }

    /// The identity is there and the peer was read.
    [[nodiscard]] bool jsouTu() const { return state_.klice.value().pripad == StavKlicu::Pripad::jsou; }

    /// Loads the identity, or makes one, and the peer. Nothing once they are there. Fails with words about
    /// the refusal of the vault.
    Task<Result<void>> nacist();

    /// Takes back the question that a keyring has open, and loads in the background.
    void zkusitZnovu();

    /// The pairing is of no use, for this reason; that is told.
    void neplatne(const Error& error);

    /// Removes a peer from the vault if it is the one there. Where the vault refuses, the next start finds
    /// it.
    Task<void> smazat(PairedPeer peer);

    /// For the end of the program: nothing is loaded any more, and a keyring asks nobody.
    void ukoncit();

  private:
    Task<void> nacistZnovu();
    Task<Result<void>> nactiIdentitu();
    /// Whether it could be read. Fails where the vault is locked.
    Task<Result<bool>> nactiProtejsek();
    Error nejsou(const Error& error);

    Services services_;
    CompanionState& state_;
    Next next_;
    std::shared_ptr<const DeviceIdentity> identita_;
    Turns nacitani_;
    bool nactouSeZnovu_ = false; ///< another load waits for its turn
    bool konci_ = false;
};

} // namespace morvex
