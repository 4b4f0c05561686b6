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

/// Loads this computer's identity and the phone it is paired with from the vault into the state, and saves
/// the phone. If a keyring stays locked or the identity cannot be stored, the state says so and `tryAgain`
/// tries again. Main thread only.
class OwnKeys {
  public:
    /// All references outlive this object.
    struct Services {
        Executor& vaultThread; ///< the vault may ask a person, and so block
        IdentityStore& uloziste;
        SecretVault& vault;
        Clock& clock;
        TaskScope& scope;
    };

    /// What to do after loading. Both are called once, on the main thread.
    struct Next {
        std::function<Task<void>()> identityIsThere; ///< awaited before the phone is read
        std::function<Task<void>()> peerIsRead;      ///< called even if no phone is stored
    };

    OwnKeys(Services services, CompanionState& state, Next next)
        : services_(services), state_(state), next_(std::move(next)) {}

    /// Null until the identity has been loaded.
    [[nodiscard]] const std::shared_ptr<const DeviceIdentity>& identita() const { return identita_; }

    /// Whether the identity and the peer have been loaded.
    [[nodiscard]] bool arePresent() const { return state_.keys.value().kind == KeysState::Case::present; }

    /// Loads the identity, or makes one, and the peer. Does nothing if both are already loaded. Fails if a
    /// keyring stays locked or the identity cannot be read or stored; the error is a sentence for the user. A
    /// peer that cannot be read is reported as an invalid pairing.
    Task<Result<void>> load();

    /// Withdraws the question that a keyring has open and loads the keys in the background.
    void tryAgain();

    /// Puts into the state that the pairing is unusable, with this reason.
    void declareInvalid(const Error& error);

    /// Stores a phone in the vault. Fails if the vault refuses.
    Task<Result<void>> ulozit(PairedPeer peer);
    /// Removes a phone that is no longer paired from the vault, unless another one has been stored since.
    /// Until that succeeds, the state names the problem and the removal is retried; the last attempt is made
    /// at the end of the program.
    Task<void> forgetPhone(PairedPeer peer);
    /// The same for a phone that the user refused while it was being stored: it is replaced by the phone of
    /// the state.
    Task<void> putBack(PairedPeer refused);

    /// For the end of the program: nothing is loaded any more and the keyring asks nobody.
    void shutDown();

  private:
    Task<void> loadAgain();
    /// Returns whether the peer has been read now.
    Task<Result<bool>> loadMissing();
    Task<Result<void>> nactiIdentitu();
    /// Returns whether the peer could be read. Fails if the vault is locked.
    Task<Result<bool>> nactiProtejsek();
    /// Resumes when the vault has replaced `peer` by the phone of the state, or by none. After a failure,
    /// whose text `failureText` makes, it retries periodically, and at once when the vault has stored
    /// something else.
    Task<void> replaceStored(PairedPeer peer, Sentence (*failureText)(const Error& proc));
    void retryNow();
    void tellUnfinished();
    Error missing(const Error& error);

    Services services_;
    CompanionState& state_;
    Next next_;
    std::shared_ptr<const DeviceIdentity> identita_;
    Turns loadTurns_;
    bool willLoadAgain_ = false; ///< another load waits for its turn
    bool isEnding_ = false;
    std::map<std::uint64_t, Sentence> unfinished_; ///< problems with replacements still to be done, by number
    std::uint64_t lastNumber_ = 0;
    std::stop_source pauses_; ///< ends the pauses before the next attempts
};

} // namespace morvex
