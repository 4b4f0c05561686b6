#pragma once

#include "foundation/Clock.h"
#include "foundation/EventStream.h"
#include "foundation/Random.h"
#include "foundation/TaskScope.h"
#include "shared-apple/RelayLink.h"
#include "shared/base/Sentence.h"
#include "shared/trust/DeviceIdentity.h"
#include "shared/trust/SecureChannel.h"
#include "shared/wire/MacAvailability.h"
#include "shared/wire/MacPayload.h"
#include "shared/wire/PairedPeer.h"

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <variant>

namespace morvex {

/// The application's interface to the peer. It uses a `RelayLink`, exchanges session hellos with the peer,
/// holds the current `SecureChannel`, and turns the events of the relay into states, decoded messages and
/// error sentences.
///
/// Runs on the link's executor, so that a busy main thread never delays the link; the public operations may
/// be called from any executor and switch to it. The owner awaits `zastavit()` before it destroys the object.
class SecureLink {
  public:
    struct Stav {
        MacAvailability stav;
        bool operator==(const Stav&) const = default;
    };

    struct Zprava {
        MacPayload payload;
        std::string requestID;
        bool operator==(const Zprava&) const = default;
    };

    struct Chyba {
        Sentence text;
        bool operator==(const Chyba&) const = default;
    };

    /// A secured session now exists.
    struct Pripraveno {
        bool operator==(const Pripraveno&) const = default;
    };

    using Udalost = std::variant<Stav, Zprava, Chyba, Pripraveno>;

    struct Services {
        RelayLink::Services relay;
        Random& random;
    };

    /// Fails with `TalkSpanError::NotPaired` when the peer's relay address is unusable.
    static Result<std::shared_ptr<SecureLink>> create(std::shared_ptr<const DeviceIdentity> identita,
                                                      PairedPeer protejsek, DeviceRole role,
                                                      Services services);

    /// Does nothing if it is already running.
    Task<void> spustit();

    /// Drops the session, stops the relay link and waits until everything has ended. May be started again.
    Task<void> zastavit();

    /// See `RelayLink::tryNow`.
    Task<void> connectNow() { return relayLink_.tryNow(); }

    /// Seals and sends. Fails with `TalkSpanError::MacOffline` when there is no session or its login is over,
    /// with `AmbiguousIdentity` for a request id with a "|", else like `RelayLink::send`.
    Task<Result<void>> poslat(MacPayload payload, std::string requestID);

    /// The events; the stream lives as long as this object.
    EventStream<Udalost>& udalosti() { return udalosti_; }

  private:
    SecureLink(std::shared_ptr<const DeviceIdentity> identita, PairedPeer protejsek, DeviceRole role,
               RelayAddress address, Services services);

    Task<void> listen(std::stop_token stop);
    /// Waits until the application has room for the event. Messages wait longer only while their connection
    /// lives; after that only the bound on memory applies, so that a new connection soon gets its session.
    Task<void> roomFor(const RelayLink::Udalost& event, std::stop_token stop);
    Task<void> handle(RelayLink::Pripojuji event);
    Task<void> handle(RelayLink::Prihlaseno event);
    Task<void> handle(RelayLink::Protejsek event);
    Task<void> handle(RelayLink::Obalka event);
    Task<void> handle(RelayLink::Selhalo event);
    Task<void> handle(RelayLink::Odpojeno event);
    Task<void> sendHello();
    void acceptHello(const Envelope& envelope);
    Result<SecureChannel> channelWith(const AgreementPublicKey& peerEphemeral) const;
    /// False for a peer key that was already combined with our current key. Otherwise anybody who repeats an
    /// old hello, such as the relay, could restart the counters under the same keys: one nonce would serve
    /// two messages, and old messages would be accepted as new.
    bool isNewKey(const AgreementPublicKey& peerEphemeral);
    void drawKey();
    void tell(MacAvailability stav);
    void tellError(Sentence text);

    [[nodiscard]] Executor& executor() const { return services_.relay.executor; }

    [[nodiscard]] Date now() const { return services_.relay.clock.now(); }

    std::shared_ptr<const DeviceIdentity> identita_;
    PairedPeer protejsek_;
    DeviceRole role_;
    Services services_;
    RelayLink relayLink_;
    std::optional<EphemeralPrivateKey> mujEfemerni_;
    std::set<AgreementPublicKey> usedPeerKeys_; ///< since `mujEfemerni_` was drawn
    std::optional<SecureChannel> kanal_;
    RelayLink::Login login_; ///< the last login that was handled; the session belongs to it
    std::unique_ptr<TaskScope> posluchac_;
    EventStream<Udalost> udalosti_;
};

} // namespace morvex
