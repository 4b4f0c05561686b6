#include "relay/SocketSession.h"

#include "relay/FailureFrame.h"
#include "shared/base/NotReadingPong.h"

#include <boost/asio/co_spawn.hpp>
#include <boost/asio/detached.hpp>

#include <chrono>
#include <exception>
#include <utility>

namespace morvex {

namespace asio = boost::asio;
namespace http = boost::beast::http;
namespace websocket = boost::beast::websocket;

namespace {

constexpr auto asTuple = asio::as_tuple(asio::use_awaitable);
constexpr std::size_t readStep = 16 * kibibyte;
/// Bytes; when memory is needed, a socket that holds more is cut off instead of closed.
constexpr std::size_t bearableWhileClosing = 64 * kibibyte;

constexpr std::uint16_t goingAway = 1001;
constexpr std::uint16_t internalError = 1011;
constexpr std::uint16_t tryAgainLater = 1013;

Date today() {
    return std::chrono::time_point_cast<Date::duration>(std::chrono::system_clock::now());
}

} // namespace

SocketSession::SocketSession(PeerStream stream, std::shared_ptr<RelayState> state, Places::Place place,
                             std::string_view clientVersion)
    : state_(std::move(state)),
      place_(std::move(place)),
      socket_(std::move(stream)),
      login_(Login::start(clientVersion)),
      vitals_(state_->limits, std::chrono::steady_clock::now()),
      mayRead_(socket_.get_executor()),
      mayWrite_(socket_.get_executor()) {
    place_.onEviction([this] { abort(); });
    // Beast's own limits are off, since silence and sizes are judged here: a device must be told that its
    // frame is too large before the socket ends.
    socket_.set_option(websocket::stream_base::timeout{websocket::stream_base::none(),
                                                       websocket::stream_base::none(), false});
    socket_.read_message_max(0);
    socket_.auto_fragment(false);
    socket_.text(true);
    socket_.set_option(websocket::stream_base::decorator(
        [](websocket::response_type& response) { response.set(http::field::server, "morvex-relay"); }));
    socket_.next_layer().connection().screenFrames();
}

SocketSession::~SocketSession() {
    state_->switchboard.forget(*this);
}

void SocketSession::start(Request upgrade) {
    socket_.next_layer().connection().expiresNever();
    state_->sockets.push_back(weak_from_this());
    asio::co_spawn(socket_.get_executor(), readFrames(shared_from_this(), std::move(upgrade)),
                   [self = shared_from_this()](std::exception_ptr) { self->readingEnded(); });
}

asio::awaitable<void> SocketSession::readFrames(Session self, Request upgrade) {
    auto [error] = co_await self->socket_.async_accept(upgrade, asTuple);
    if (error) co_return;
    self->deliver(self->login_.challenge());
    asio::co_spawn(self->socket_.get_executor(), writeFrames(self),
                   [self](std::exception_ptr) { self->abort(); });
    while (co_await self->readFrame()) {
        self->takeFrame();
        while (self->isReadingPaused_ && !self->ending_) co_await self->mayRead_.wait();
    }
}

asio::awaitable<bool> SocketSession::readFrame() {
    do {
        auto [error, count] = co_await socket_.async_read_some(step_, readStep, asTuple);
        if (error || ending_) co_return false;
        incoming_.append({static_cast<const char*>(step_.cdata().data()), step_.size()});
        step_.clear();
        state_->switchboard.weigh(*this);
        if (ending_ || !isBearable()) co_return false;
    } while (!socket_.is_message_done());
    co_return true;
}

bool SocketSession::isBearable() {
    if (passedOver_ == 0 && incoming_.size() <= longestFrame()) return true;
    passedOver_ += incoming_.size();
    incoming_.clear();
    if (isLoggedIn_ && passedOver_ <= state_->limits.passedOver) return true;
    refuse(RelayFailure::tooLarge);
    return false;
}

asio::awaitable<void> SocketSession::writeFrames(Session self) {
    for (;;) {
        if (!self->outgoing_.empty()) {
            if (!co_await self->writeFrame()) co_return;
        } else if (self->ending_) {
            co_await self->socket_.async_close(static_cast<websocket::close_code>(self->ending_->closeCode),
                                               asTuple);
            co_return;
        } else {
            co_await self->mayWrite_.wait();
        }
    }
}

asio::awaitable<bool> SocketSession::writeFrame() {
    onTheWay_ = std::move(outgoing_.front());
    outgoing_.pop_front();
    auto [error, count] = co_await socket_.async_write(asio::buffer(onTheWay_), asTuple);
    waiting_ -= onTheWay_.size();
    onTheWay_ = {};
    if (error) co_return false;
    state_->switchboard.drained(*this);
    co_return true;
}

void SocketSession::takeFrame() {
    ++framesRead_;
    auto frame = incoming_.take();
    if (std::exchange(passedOver_, 0) > 0)
        deliver(failureFrame(RelayFailure::tooLarge));
    else if (isLoggedIn_)
        state_->switchboard.receive(*this, std::move(frame));
    else
        logIn(frame);
}

void SocketSession::logIn(std::string_view frame) {
    if (!state_->loginLimit.admits(place_.origin(), Vitals::Moment::clock::now()))
        return turnAway("too many logins");
    const auto answer = login_.answer(state_->store, frame);
    if (!answer) {
        log("login failed: " + answer.error().popis().czech());
        return end({{}, internalError});
    }
    if (const auto* failure = std::get_if<RelayFailure>(&*answer)) {
        log("login refused: " + std::string{rawValue(*failure)});
        loginFailed(state_->limits.failedLoginCost - 1);
        return refuse(*failure);
    }
    sitDown(std::get<Seat>(*answer));
}

void SocketSession::sitDown(const Seat& seat) {
    const bool isNew = !seat.peer || today() - seat.tokenEnd < state_->limits.newPair;
    if (!place_.rise(isNew ? Places::Standing::newPair : Places::Standing::knownPair))
        return turnAway("no place for a login");
    name_ = shortened(seat.pair, seat.device);
    isLoggedIn_ = true;
    log("logged in");
    state_->switchboard.connect(*this, seat);
    state_->pairUsed(seat.pair);
}

void SocketSession::loginFailed(std::size_t cost) {
    state_->loginLimit.charge(place_.origin(), Vitals::Moment::clock::now(), cost);
}

void SocketSession::turnAway(const std::string& reason) {
    log(reason);
    end({{}, tryAgainLater});
}

void SocketSession::refuse(RelayFailure code) {
    if (isLoggedIn_)
        state_->switchboard.refuse(*this, code);
    else
        end(refusalEnding(code));
}

std::size_t SocketSession::longestFrame() const {
    return isLoggedIn_ ? state_->limits.frame : state_->limits.loginFrame;
}

void SocketSession::tick(Vitals::Moment now) {
    switch (vitals_.judge(signs(), now)) {
    case Vitals::Verdict::well:
        return tellNotReading();
    case Vitals::Verdict::ping:
        return ping();
    case Vitals::Verdict::late:
        log("did not log in");
        loginFailed(state_->limits.failedLoginCost);
        return end(refusalEnding(RelayFailure::notAuthenticated));
    case Vitals::Verdict::dead:
        log("silent");
        break;
    case Vitals::Verdict::stalled:
        log("takes nothing");
        break;
    case Vitals::Verdict::unfinished:
        log("does not finish a frame");
        break;
    case Vitals::Verdict::lingering:
        break;
    }
    abort();
}

Vitals::Signs SocketSession::signs() {
    const auto& meter = socket_.next_layer().connection().meter();
    auto stage = isLoggedIn_ ? Vitals::Stage::loggedIn : Vitals::Stage::loggingIn;
    if (ending_) stage = Vitals::Stage::closing;
    return {.stage = stage,
            .bytesRead = meter.bytesRead,
            .bytesWritten = meter.bytesWritten,
            .waiting = waiting_,
            .isReadingPaused = isReadingPaused_,
            .framesRead = framesRead_,
            .isWithinFrame = !socket_.is_message_done()};
}

void SocketSession::ping() {
    if (isPinging_) return;
    isPinging_ = true;
    socket_.async_ping({},
                       [self = shared_from_this()](boost::beast::error_code) { self->isPinging_ = false; });
}

void SocketSession::tellNotReading() {
    if (!isReadingPaused_ || ending_ || isPinging_) return;
    isPinging_ = true;
    socket_.async_pong(websocket::ping_data(notReadingPong.data(), notReadingPong.size()),
                       [self = shared_from_this()](boost::beast::error_code) { self->isPinging_ = false; });
}

void SocketSession::goAway() {
    state_->switchboard.disconnect(*this);
    end({{}, goingAway});
    state_->switchboard.weigh(*this);
}

void SocketSession::deliver(std::string frame) {
    if (ending_) return;
    waiting_ += frame.size();
    outgoing_.push_back(std::move(frame));
    mayWrite_.wake();
}

std::size_t SocketSession::waiting() const {
    return waiting_;
}

std::size_t SocketSession::held() const {
    return waiting_ + incoming_.capacity() + step_.capacity();
}

void SocketSession::pauseReading() {
    isReadingPaused_ = true;
}

void SocketSession::resumeReading() {
    isReadingPaused_ = false;
    mayRead_.wake();
}

void SocketSession::end(Ending ending) {
    if (!ending_) {
        outgoing_.clear();
        incoming_.clear();
        waiting_ = onTheWay_.size();
    }
    if (ending.freesMemory && held() > bearableWhileClosing) abort();
    if (ending_) return;
    if (!ending.lastFrame.empty()) deliver(std::move(ending.lastFrame));
    ending_ = std::move(ending);
    mayRead_.wake();
    mayWrite_.wake();
}

void SocketSession::readingEnded() {
    if (isLoggedIn_) log("gone");
    state_->switchboard.disconnect(*this);
    end({});
    state_->switchboard.weigh(*this);
}

void SocketSession::abort() {
    socket_.next_layer().connection().close();
}

void SocketSession::log(const std::string& event) {
    state_->events.note(event, place_.origin(), name_ + ": " + event, Vitals::Moment::clock::now());
}

} // namespace morvex
