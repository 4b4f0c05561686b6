#pragma once

#include "foundation/Clock.h"
#include "foundation/EventStream.h"
#include "foundation/OneShot.h"
#include "foundation/TaskScope.h"
#include "platform/ports/WebSocketClient.h"
#include "shared-apple/RelayAddress.h"
#include "shared/base/Sentence.h"
#include "shared/trust/DeviceIdentity.h"
#include "shared/wire/RelayMessage.h"

#include <memory>
#include <stop_token>
#include <string>
#include <variant>

namespace morvex {

/// Keeps this device connected to the relay: one WebSocket, a login by signed challenge, keep-alive,
/// reconnection with back-off, and the events of all that. It knows nothing of sessions; it hands envelopes
/// up and down.
///
/// Lives on the link's executor; `start`, `stop`, `tryNow` and `send` may be called from any executor and hop
/// there. The owner awaits `stop()` before it lets the object go.
///
///     start -> pripojuji -> (login) prihlaseno -> protejsek, obalka, selhalo ... -> odpojeno -> pripojuji
///     ...
class RelayLink {
  public:
    struct Pripojuji {
        int pokus = 1;  ///< number of the attempt
        double zat = 0; ///< seconds before it starts
        bool operator==(const Pripojuji&) const = default;
    };

    struct LoginMark {
        std::stop_token over; ///< requested with the end of the socket
    };

    /// Stands for one login, from its acceptance to the end of its socket, behind which messages that were
    /// read before may still come.
    using Login = std::shared_ptr<const LoginMark>;

    struct Prihlaseno {
        bool protejsekOnline = false;
        Login login = {}; ///< for what is sent from now on

        /// Two logins that tell the same are equal.
        bool operator==(const Prihlaseno& other) const { return protejsekOnline == other.protejsekOnline; }
    };

    struct Protejsek {
        bool online = false;
        bool operator==(const Protejsek&) const = default;
    };

    struct Obalka {
        Envelope envelope;
        bool operator==(const Obalka&) const = default;
    };

    struct Selhalo {
        RelayFailure code = RelayFailure::malformed;
        std::string detail;
        bool operator==(const Selhalo&) const = default;
    };

    struct Odpojeno {
        Sentence duvod;
        bool operator==(const Odpojeno&) const = default;
    };

    using Udalost = std::variant<Pripojuji, Prihlaseno, Protejsek, Obalka, Selhalo, Odpojeno>;

    /// What the link works with; all of it outlives the link.
    struct Services {
        Executor& executor;
        Clock& clock;
        WebSocketClient& sockets;
    };

    RelayLink(RelayAddress relayURL, std::shared_ptr<const DeviceIdentity> identita, PairID pair,
              Services services);

    /// Does nothing while the link is meant to be up.
    Task<void> start();

    /// Says goodbye (1001) and waits for the end of all that runs. Harmless when nothing runs.
    Task<void> stop();

    /// The attempt that is waited for begins now. Nothing while none is waited for; the waits after it stay
    /// as they are.
    Task<void> tryNow();

    /// Sends on the socket of this login. Fails with `TalkSpanError::MacOffline` once that is over or for no
    /// login, with `MessageTooLong` for a frame beyond the limit (nothing is sent, the link stays), else with
    /// `NetworkError`.
    Task<Result<void>> send(Envelope envelope, Login login);

    /// Whether the socket of this login is the one of this moment. On the link's executor.
    [[nodiscard]] bool isCurrent(const Login& login) const { return login && login == login_; }

    /// The events; the stream lives as long as this object.
    EventStream<Udalost>& udalosti() { return udalosti_; }

  private:
    /// Decides the race between a pong and its timer: whoever comes first.
    using Zamluveno = OneShot<bool>;

    // A run keeps to its own scope: a stopped one may still be ending while the next one begins.
    Task<void> run(TaskScope& scope);
    /// Between two attempts. False when the run is to end.
    Task<bool> pause(Clock::Duration time, std::stop_token stop);
    Task<Result<void>> connection(TaskScope& scope);
    Task<Result<void>> logInInTime(std::shared_ptr<WebSocket> socket, std::stop_token stop);
    Task<Result<void>> logIn(std::shared_ptr<WebSocket> socket, std::stop_token stop);
    Task<Result<void>> receiveAll(std::shared_ptr<WebSocket> socket, std::stop_token stop);
    Task<void> keepAlive(TaskScope& scope, std::shared_ptr<WebSocket> socket, std::stop_token stop);
    Task<bool> hasPong(TaskScope& scope, std::shared_ptr<WebSocket> socket, std::stop_token stop);
    Task<void> ping(std::shared_ptr<WebSocket> socket, std::shared_ptr<Zamluveno> zamluveno);
    RelayMessage answerTo(const RelayMessage::Challenge& challenge) const;

    RelayAddress relayURL_;
    std::shared_ptr<const DeviceIdentity> identita_;
    PairID pair_;
    Services services_;
    std::shared_ptr<WebSocket> socket_;
    std::unique_ptr<TaskScope> bezici_;
    Login login_;             ///< of `socket_`, once the relay has accepted it
    std::stop_source cekani_; ///< of the attempt that is waited for, when one is
    int pokus_ = 0;
    bool chceBezet_ = false;
    EventStream<Udalost> udalosti_;
};

} // namespace morvex
