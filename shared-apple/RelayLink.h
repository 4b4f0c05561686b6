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

/// Keeps this device connected to the relay: one WebSocket, login by signed challenge, keep-alive,
/// reconnection with back-off, and the events about them. It knows nothing of sessions; it only passes
/// envelopes in both directions.
///
/// Runs on the link's executor; `start`, `stop`, `tryNow` and `send` may be called from any executor and
/// switch to it. The owner awaits `stop()` before it destroys the object.
///
///     start -> pripojuji -> (login) prihlaseno -> protejsek, obalka, selhalo ... -> odpojeno -> pripojuji
///     ...
class RelayLink {
  public:
    struct Pripojuji {
        int pokus = 1;  ///< number of the attempt
        double zat = 0; ///< seconds before the attempt starts
        bool operator==(const Pripojuji&) const = default;
    };

    struct LoginMark {
        std::stop_token over; ///< requested when the socket ends
    };

    /// Identifies one login, from its acceptance to the end of its socket. Messages that were read earlier
    /// may still be delivered after that end.
    using Login = std::shared_ptr<const LoginMark>;

    struct Prihlaseno {
        bool protejsekOnline = false;
        Login login = {}; ///< pass it to `send`

        /// Compares the reported state, not the identity of the login.
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

    /// The services that the link uses; all of them outlive the link.
    struct Services {
        Executor& executor;
        Clock& clock;
        WebSocketClient& sockets;
    };

    RelayLink(RelayAddress relayURL, std::shared_ptr<const DeviceIdentity> identita, PairID pair,
              Services services);

    /// Does nothing if the link was already started.
    Task<void> start();

    /// Closes the socket with 1001 and waits until everything has ended. Harmless when nothing runs.
    Task<void> stop();

    /// Ends the wait before the next attempt, so that the attempt begins now. Does nothing if no wait is in
    /// progress; later waits keep their length.
    Task<void> tryNow();

    /// Sends on the socket of this login. Fails with `TalkSpanError::MacOffline` when that login is over or
    /// null, with `MessageTooLong` for a frame above the limit (nothing is sent, the link stays up), else
    /// with `NetworkError`.
    Task<Result<void>> send(Envelope envelope, Login login);

    /// Whether this login belongs to the current socket. Call on the link's executor.
    [[nodiscard]] bool isCurrent(const Login& login) const { return login && login == login_; }

    /// The events; the stream lives as long as this object.
    EventStream<Udalost>& udalosti() { return udalosti_; }

  private:
    /// Decides the race between a pong and its timer; the first to answer wins.
    using Zamluveno = OneShot<bool>;

    // Every run has its own scope, since a stopped run may still be ending while the next one begins.
    Task<void> run(TaskScope& scope);
    /// Waits between two attempts. Returns false when the run has to end.
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
    Login login_;               ///< the accepted login on `socket_`; null before
    std::stop_source waitStop_; ///< ends the current wait between attempts
    int pokus_ = 0;
    bool chceBezet_ = false;
    EventStream<Udalost> udalosti_;
};

} // namespace morvex
