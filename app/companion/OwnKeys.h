#pragma once

#include "app/companion/CompanionState.h"
#include "foundation/Clock.h"
#include "foundation/TaskScope.h"
#include "foundation/Turns.h"
#include "platform/ports/SecretVault.h"
#include "shared-apple/IdentityStore.h"
#include "shared/trust/DeviceIdentity.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <stop_token>
#include <utility>

namespace morvex {

/// This computer's identity and the phone that it is paired with, on their way between the vault and the
/// state. Where a keyring stays locked or the identity cannot be kept, that is told there, and `zkusitZnovu`
/// tries again. Main thread only.
class OwnKeys {
  public:
    /// All of it outlives this object.
    struct Services {
        Executor& vaultThread; ///< the vault may ask a person, and so block
        IdentityStore& uloziste;
        SecretVault& vault;
        Clock& clock;
        TaskScope& scope;
    };

    /// What follows; both are called on the main thread.
    struct Next {
        std::function<Task<void>()> identityIsThere; ///< once, awaited before the phone is read
        std::function<void()> peerIsRead;            ///< there may be none
    };

    OwnKeys(Services services, CompanionState& state, Next next)
        : services_(services), state_(state), next_(std::move(next)) {}

    /// Null until it is there.
    [[nodiscard]] const std::shared_ptr<const DeviceIdentity>& identita() const { return identita_; }

    /// The identity is there and the peer was read.
    [[nodiscard]] bool jsouTu() const { return state_.klice.value().pripad == StavKlicu::Pripad::jsou; }

    /// Loads the identity, or makes one, and the peer. Nothing once they are there. Fails where a keyring
    /// stays locked, or the identity cannot be read or kept, in the words for it; a peer that cannot be read
    /// is told as an invalid pairing.
    Task<Result<void>> nacist();

    /// Takes back the question that a keyring has open, and loads in the background.
    void zkusitZnovu();

    /// The pairing is of no use, for this reason; that is told.
    void neplatne(const Error& error);

    /// Keeps a phone in the vault. Fails where the vault refuses.
    Task<Result<void>> ulozit(PairedPeer peer);
    /// Takes a phone that is paired no more out of the vault, unless another one is kept there since. Until
    /// the vault has done it, that is told in the state, and it is tried again; once more at the end.
    Task<void> zapomenout(PairedPeer peer);
    /// The same for a phone that was refused while it was being kept: the one of the state takes its place.
    Task<void> vratit(PairedPeer odmitnuty);

    /// For the end of the program: nothing is loaded any more, and a keyring asks nobody.
    void ukoncit();

  private:
    Task<void> nacistZnovu();
    Task<Result<void>> nactiIdentitu();
    /// Whether it could be read. Fails where the vault is locked.
    Task<Result<bool>> nactiProtejsek();
    /// Until the vault has put the state's phone, or none, in the place of `peer`. `neslo` tells that it has
    /// not. Meanwhile it is tried again and again, and at once when the vault has kept something else.
    Task<void> nahradit(PairedPeer peer, Sentence (*neslo)(const Error& proc));
    void retryNow();
    void tellUnfinished();
    Error nejsou(const Error& error);

    Services services_;
    CompanionState& state_;
    Next next_;
    std::shared_ptr<const DeviceIdentity> identita_;
    Turns nacitani_;
    bool nactouSeZnovu_ = false; ///< another load waits for its turn
    bool konci_ = false;
    std::map<std::uint64_t, Sentence> unfinished_; ///< what the vault has yet to replace, by its number
    std::uint64_t lastNumber_ = 0;
    std::stop_source pauses_; ///< of those that wait for their next try
};

} // namespace morvex
