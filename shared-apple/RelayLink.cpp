#include "shared-apple/RelayLink.h"

#include "foundation/EitherStop.h"
#include "foundation/Text.h"
#include "shared-apple/MessageTooLong.h"
#include "shared/base/Try.h"
#include "shared/wire/Json.h"
#include "shared/wire/TalkSpanError.h"

#include <algorithm>
#include <array>
#include <utility>

namespace morvex {

namespace {

using namespace std::chrono_literals;

constexpr std::array<int, 7> delaysInSeconds{0, 1, 2, 5, 10, 20, 30};
constexpr auto pingInterval = 20s;
constexpr auto pongLimit = 10s;
constexpr auto loginLimit = 60s;

/// While this many events wait to be taken, the relay is not read.
constexpr std::size_t mostWaiting = 1;

/// Longest text of the relay that is shown to the user.
constexpr std::size_t longestDetail = 500;

std::unexpected<Error> notPaired(Sentence why) {
    return fail(TalkSpanError{TalkSpanError::NotPaired{std::move(why)}});
}

Task<Result<RelayMessage>> receive(std::shared_ptr<WebSocket> socket, std::stop_token stop) {
    CO_TRY(auto, frame, co_await socket->receive());
    if (stop.stop_requested()) co_return fail(TalkSpanError{TalkSpanError::Cancelled{}});
    if (frame.kind == WebSocketFrame::Kind::other) co_return fail(TextError{"Neznámý druh rámce."_sentence});
    co_return decode<RelayMessage>(frame.data, messageLimits);
}

/// The nonce is signed as it is. If it began like another text that this key signs, the relay would get a
/// signature that it could use elsewhere, for example on a hello with a key of its own. A random nonce begins
/// so once in sixteen million logins; such a login is tried again.
bool saysMoreThanChance(ByteView nonce) {
    const auto text = asText(nonce);
    return text.starts_with("ts-") || text.starts_with("revoke|");
}

RelayLink::Selhalo toldBy(const RelayMessage::Failure& failure) {
    return {failure.code, excerpt(failure.detail, longestDetail)};
}

/// Failures that retrying cannot repair.
bool isFinal(RelayFailure code) {
    return code == RelayFailure::protocolMismatch || code == RelayFailure::unknownPair ||
           code == RelayFailure::revoked;
}

} // namespace

RelayLink::RelayLink(RelayAddress relayURL, std::shared_ptr<const DeviceIdentity> identita, PairID pair,
                     Services services)
    : relayURL_(std::move(relayURL)),
      identita_(std::move(identita)),
      pair_(std::move(pair)),
      services_(services) {}

Task<void> RelayLink::start() {
    co_await hop(services_.executor);
    if (chceBezet_) co_return;
    chceBezet_ = true;
    pokus_ = 0;
    // The loop that ended by itself after a final failure.
    if (auto ended = std::move(bezici_)) co_await ended->join();
    if (!chceBezet_ || bezici_) co_return;
    bezici_ = std::make_unique<TaskScope>(services_.executor);
    bezici_->spawn(run(*bezici_));
}

Task<void> RelayLink::stop() {
    co_await hop(services_.executor);
    chceBezet_ = false;
    auto ending = std::move(bezici_);
    if (ending) ending->stop();
    login_.reset();
    if (auto socket = std::exchange(socket_, nullptr)) socket->close(CloseCode::goingAway);
    if (ending) co_await ending->join();
}

Task<void> RelayLink::tryNow() {
    co_await hop(services_.executor);
    waitStop_.request_stop();
}

Task<Result<void>> RelayLink::send(Envelope envelope, Login login) {
    co_await hop(services_.executor);
    if (!isCurrent(login)) co_return fail(TalkSpanError{TalkSpanError::MacOffline{}});
    // Keeps the socket alive until the send has ended, which may be after the connection was replaced.
    auto socket = socket_;
    auto frame = encode(RelayMessage{RelayMessage::Forward{std::move(envelope)}});
    // The relay would not accept such a frame.
    if (frame.size() > frameLimit) co_return fail(MessageTooLong{});
    co_return co_await socket->sendText(std::move(frame));
}

Task<void> RelayLink::run(TaskScope& scope) {
    auto stop = scope.token();
    while (chceBezet_ && !stop.stop_requested()) {
        auto index = std::min(static_cast<std::size_t>(pokus_), delaysInSeconds.size() - 1);
        int delay = delaysInSeconds[index];
        udalosti_.push(Pripojuji{delay == 0 ? 1 : pokus_ + 1, static_cast<double>(delay)});
        if (delay > 0 && !co_await pause(std::chrono::seconds(delay), stop)) co_return;

        auto ended = co_await connection(scope);
        if (stop.stop_requested()) co_return;
        udalosti_.push(Odpojeno{ended ? "Spojení bylo uzavřeno."_sentence : ended.error().popis()});
        socket_ = nullptr;
        ++pokus_;
    }
}

Task<bool> RelayLink::pause(Clock::Duration time, std::stop_token stop) {
    waitStop_ = {};
    const EitherStop ended(stop, waitStop_.get_token());
    (void)co_await sleepFor(services_.clock, time, ended.token());
    co_return !stop.stop_requested();
}

Task<Result<void>> RelayLink::connection(TaskScope& scope) {
    auto stop = scope.token();
    CO_TRY(auto, socket, co_await services_.sockets.connect({.url = relayURL_.socket()}, stop));
    std::stop_source connected;
    Result<void> ended;
    if (!stop.stop_requested()) {
        socket_ = socket;
        ended = co_await logInInTime(socket, stop);
        if (ended) {
            scope.spawn(keepAlive(scope, socket, connected.get_token()));
            ended = co_await receiveAll(socket, stop);
        }
    }
    connected.request_stop();
    // If this run was stopped, its login is already reset, and `login_` may belong to a later run.
    if (!stop.stop_requested()) login_.reset();
    socket->close(CloseCode::goingAway);
    co_return ended;
}

/// Bounds the login, since nothing else notices a relay that accepts the connection and then stays silent.
Task<Result<void>> RelayLink::logInInTime(std::shared_ptr<WebSocket> socket, std::stop_token stop) {
    auto timer = services_.clock.at(services_.clock.sinceBoot() + loginLimit,
                                    [socket] { socket->close(CloseCode::abnormal); });
    auto ended = co_await logIn(std::move(socket), std::move(stop));
    services_.clock.forget(timer);
    co_return ended;
}

Task<Result<void>> RelayLink::logIn(std::shared_ptr<WebSocket> socket, std::stop_token stop) {
    CO_TRY(auto, first, co_await receive(socket, stop));
    auto* challenge = first.as<RelayMessage::Challenge>();
    if (!challenge || saysMoreThanChance(challenge->nonce))
        co_return notPaired("Relay neposlal výzvu."_sentence);
    auto mine = ProtocolVersion::current;
    if (challenge->v.major != mine.major)
        co_return fail(TalkSpanError{TalkSpanError::ProtocolMismatch{mine.text(), challenge->v.text()}});
    CO_CHECK(co_await socket->sendText(encode(answerTo(*challenge))));

    CO_TRY(auto, answer, co_await receive(socket, stop));
    if (auto* failure = answer.as<RelayMessage::Failure>()) {
        auto told = toldBy(*failure);
        udalosti_.push(told);
        if (isFinal(failure->code)) chceBezet_ = false;
        co_return notPaired(Sentence(told.detail));
    }
    auto* authenticated = answer.as<RelayMessage::Authenticated>();
    if (!authenticated) co_return notPaired("Nečekaná odpověď na přihlášení."_sentence);
    pokus_ = 0;
    login_ = std::make_shared<const LoginMark>(socket->ended());
    udalosti_.push(Prihlaseno{authenticated->peerOnline, login_});
    co_return Result<void>{};
}

RelayMessage RelayLink::answerTo(const RelayMessage::Challenge& challenge) const {
    return {RelayMessage::Authenticate{pair_, identita_->deviceID(), identita_->signingKey(),
                                       identita_->sign(challenge.nonce)}};
}

Task<Result<void>> RelayLink::receiveAll(std::shared_ptr<WebSocket> socket, std::stop_token stop) {
    while (!stop.stop_requested()) {
        co_await udalosti_.room(mostWaiting, stop);
        CO_TRY(auto, message, co_await receive(socket, stop));
        if (auto* presence = message.as<RelayMessage::PeerOnline>())
            udalosti_.push(Protejsek{presence->isOnline});
        else if (auto* forward = std::get_if<RelayMessage::Forward>(&message.value))
            udalosti_.push(Obalka{std::move(forward->envelope)});
        else if (auto* failure = message.as<RelayMessage::Failure>())
            udalosti_.push(toldBy(*failure));
    }
    co_return Result<void>{};
}

Task<void> RelayLink::keepAlive(TaskScope& scope, std::shared_ptr<WebSocket> socket, std::stop_token stop) {
    while (co_await sleepFor(services_.clock, pingInterval, stop)) {
        const auto before = socket->reading();
        if (co_await hasPong(scope, socket, stop)) continue;
        // The pong may be among the data that this end does not read yet. The next ping is sent nevertheless:
        // writing reveals a broken connection, and shows the relay that this device is alive.
        if (before.isHeldBack || socket->reading() != before) continue;
        socket->close(CloseCode::abnormal);
        co_return;
    }
}

Task<bool> RelayLink::hasPong(TaskScope& scope, std::shared_ptr<WebSocket> socket, std::stop_token stop) {
    auto zamluveno = std::make_shared<Zamluveno>();
    scope.spawn(ping(std::move(socket), zamluveno));
    auto timer = services_.clock.at(services_.clock.sinceBoot() + pongLimit,
                                    [zamluveno] { zamluveno->answer(false); });
    bool arrived = false;
    {
        std::stop_callback ended(stop, [zamluveno] { zamluveno->answer(true); });
        arrived = co_await zamluveno->wait();
    }
    services_.clock.forget(timer);
    co_return arrived;
}

Task<void> RelayLink::ping(std::shared_ptr<WebSocket> socket, std::shared_ptr<Zamluveno> zamluveno) {
    auto pong = co_await socket->ping();
    zamluveno->answer(pong.has_value());
}

} // namespace morvex
