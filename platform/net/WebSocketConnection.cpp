#include "platform/net/WebSocketConnection.h"

#include "platform/net/Dialing.h"
#include "platform/net/UpgradeAnswer.h"
#include "shared/base/FrameLimit.h"
#include "shared/base/NotReadingPong.h"
#include "shared/base/Require.h"
#include "shared/base/SystemTrouble.h"

#include <boost/asio/buffer.hpp>
#include <boost/asio/co_spawn.hpp>
#include <boost/beast/core/buffers_to_string.hpp>

#include <algorithm>
#include <exception>
#include <iterator>
#include <tuple>
#include <utility>

namespace morvex {

namespace {

namespace asio = boost::asio;
namespace websocket = boost::beast::websocket;
using boost::system::error_code;

/// The stream masks a message in pieces of this size.
constexpr std::size_t writeBuffer = std::size_t{64} * 1024;

/// A message is read in pieces of this size.
constexpr std::size_t readStep = std::size_t{64} * 1024;

/// A buffer that a large message made larger than this, in bytes, is released.
constexpr std::size_t keptBuffer = std::size_t{256} * 1024;

/// The prefix of log lines.
constexpr std::string_view socketLog = "WebSocket";

/// The memory cost of a waiting message in bytes; not zero even for an empty message.
std::size_t costOf(const WebSocketFrame& frame) {
    return frame.data.size() + sizeof(WebSocketFrame);
}

void rethrow(const std::exception_ptr& exception) {
    if (exception) std::rethrow_exception(exception);
}

} // namespace

WebSocketConnection::WebSocketConnection(NetworkThread& network, asio::ssl::context* tls, WebSocketUrl url,
                                         WebSocketRequest request)
    : NetworkConnection(network),
      url_(std::move(url)),
      request_(std::move(request)),
      stream_(network.context(), tls) {
    stream_.text(true);
    stream_.auto_fragment(false);
    stream_.write_buffer_bytes(writeBuffer);
    stream_.read_message_max(passedOverLimit);
    stream_.set_option(websocket::stream_base::decorator([this](websocket::request_type& handshake) {
        for (const auto& [name, value] : request_.headers) handshake.insert(name, value);
    }));
    stream_.control_callback([this](websocket::frame_type kind, boost::beast::string_view payload) {
        if (kind == websocket::frame_type::pong) noticePong({payload.data(), payload.size()});
    });
}

void WebSocketConnection::open(Opened opened) {
    opened_ = std::move(opened);
    auto self = shared_from_this();
    timer_.expires_after(network_.limits().opening);
    timer_.async_wait([self](error_code error) {
        if (!error && self->opened_) self->fall(popis(SystemTrouble::timedOut));
    });
    asio::co_spawn(network_.context(), connect(),
                   [self](const std::exception_ptr& exception) { rethrow(exception); });
}

asio::awaitable<void> WebSocketConnection::connect() {
    auto [notFound, addresses] = co_await findHost(resolver_, url_.host, url_.port);
    if (failed(notFound)) co_return;
    if (failed(co_await connectTo(std::move(addresses), tcp()))) co_return;
    if (auto* tls = stream_.next_layer().tls(); tls && failed(co_await shakeHands(*tls, url_.host)))
        co_return;
    co_await upgrade();
}

asio::awaitable<void> WebSocketConnection::upgrade() {
    websocket::response_type response;
    auto [error] = co_await stream_.async_handshake(response, url_.authority, url_.target, asTuple);
    if (error == websocket::error::upgrade_declined)
        co_return fall("Server odmítl WebSocket (HTTP {stav})."_sentence(response.result_int()));
    if (!error && !isWhatWasAskedFor(response)) error = websocket::error::upgrade_declined;
    if (!failed(error)) opened();
}

void WebSocketConnection::opened() {
    timer_.cancel();
    // From here on the stream's own limit bounds the farewell to a peer that broke the protocol.
    stream_.set_option(
        websocket::stream_base::timeout{network_.limits().closing, websocket::stream_base::none(), false});
    std::exchange(opened_, nullptr)({});
    readOn();
}

void WebSocketConnection::send(std::string text, Reply<void> reply) {
    if (failure_) return reply(fail(*failure_));
    if (!outgoing_.empty() && outgoingBytes_ + text.size() > request_.sendLimit)
        return reply(fail(NetworkError{"Spojení nestíhá odesílat."_sentence}));
    outgoingBytes_ += text.size();
    outgoing_.push_back({std::move(text), std::move(reply)});
    if (outgoing_.size() == 1) writeNext();
}

void WebSocketConnection::writeNext() {
    stream_.async_write(asio::buffer(outgoing_.front().text),
                        [self = shared_from_this()](error_code error, std::size_t) {
                            auto written = std::move(self->outgoing_.front());
                            self->outgoing_.pop_front();
                            self->outgoingBytes_ -= written.text.size();
                            if (self->failed(error)) return written.reply(fail(*self->failure_));
                            written.reply({});
                            if (!self->outgoing_.empty()) self->writeNext();
                        });
}

void WebSocketConnection::receive(Reply<WebSocketFrame> reply) {
    if (arrived_.empty() && failure_) return reply(fail(*failure_));
    require(!receiver_, "two receives wait on one WebSocket");
    if (arrived_.empty()) {
        receiver_ = std::move(reply);
        return;
    }
    auto frame = std::move(arrived_.front());
    arrived_.pop_front();
    arrivedBytes_ -= costOf(frame);
    reply(std::move(frame));
    readOn();
}

/// Reads ahead, up to `frameLimit` waiting bytes, so that pings and pongs are handled while nobody receives.
void WebSocketConnection::readOn() {
    if (reading_ || failure_) return;
    if (arrivedBytes_ >= frameLimit) return meter_->holdBack();
    meter_->readOn();
    reading_ = true;
    stream_.async_read_some(incoming_, readStep, [self = shared_from_this()](error_code error, std::size_t) {
        self->arrived(error);
    });
}

void WebSocketConnection::arrived(error_code error) {
    reading_ = false;
    if (failed(error)) return;
    if (isPassedOver_ || incoming_.size() > frameLimit) passOver();
    if (stream_.is_message_done() && !std::exchange(isPassedOver_, false)) {
        deliver({stream_.got_text() ? WebSocketFrame::Kind::text : WebSocketFrame::Kind::binary,
                 boost::beast::buffers_to_string(incoming_.data())});
        incoming_.clear();
        if (incoming_.capacity() > keptBuffer) incoming_.shrink_to_fit();
    }
    readOn();
}

/// A message that is too long is read to its end, since more may follow it.
void WebSocketConnection::passOver() {
    isPassedOver_ = true;
    incoming_.clear();
    if (incoming_.capacity() > keptBuffer) incoming_.shrink_to_fit();
}

void WebSocketConnection::deliver(WebSocketFrame frame) {
    if (receiver_) return (*std::exchange(receiver_, std::nullopt))(std::move(frame));
    arrivedBytes_ += costOf(frame);
    arrived_.push_back(std::move(frame));
}

void WebSocketConnection::ping(Reply<void> reply) {
    if (failure_) return reply(fail(*failure_));
    pings_.push_back({++lastPing_, std::move(reply)});
    if (!pinging_) writePing();
}

/// Sends one ping for all that were requested in the meantime: its pong also answers the earlier ones.
void WebSocketConnection::writePing() {
    pinging_ = true;
    sentPing_ = lastPing_;
    auto payload = std::to_string(sentPing_);
    stream_.async_ping({payload.data(), payload.size()}, [self = shared_from_this()](error_code error) {
        self->pinging_ = false;
        if (!self->failed(error) && self->sentPing_ < self->lastPing_) self->writePing();
    });
}

/// A peer that got several pings may answer only the latest (RFC 6455, section 5.5.3). A peer that reports
/// that it does not read gets no pings at present, but is alive.
void WebSocketConnection::noticePong(std::string_view payload) {
    if (payload == notReadingPong) return answerPings(std::ssize(pings_));
    auto matches = [payload](const Ping& ping) { return std::to_string(ping.number) == payload; };
    auto match = std::ranges::find_if(pings_, matches);
    if (match != pings_.end()) answerPings(match - pings_.begin() + 1);
}

void WebSocketConnection::answerPings(std::ptrdiff_t count) {
    for (; count > 0; --count) {
        pings_.front().reply({});
        pings_.pop_front();
    }
}

bool WebSocketConnection::failed(error_code error) {
    // Errors that follow a failure are neither reported nor logged.
    if (error) fall(failure_ ? Sentence() : wordsOf(error));
    return failure_.has_value();
}

Sentence WebSocketConnection::wordsOf(error_code error) {
    if (error == websocket::error::closed)
        return "Server ukončil spojení (kód {kod})."_sentence(stream_.reason().code);
    auto* tls = stream_.next_layer().tls();
    return wordsFor(socketLog, error, tls ? tls->native_handle() : nullptr);
}

void WebSocketConnection::fall(Sentence words) {
    if (!failure_) endWith(std::move(words));
    failWaiting();
    drop();
}

void WebSocketConnection::endWith(Sentence words) {
    failure_ = NetworkError{std::move(words)};
    ended_.request_stop();
}

void WebSocketConnection::failWaiting() {
    if (auto opened = std::exchange(opened_, nullptr)) opened(fail(*failure_));
    if (auto receiver = std::exchange(receiver_, std::nullopt)) (*receiver)(fail(*failure_));
    for (auto& ping : std::exchange(pings_, {})) ping.reply(fail(*failure_));
    for (auto& message : outgoing_) message.reply(fail(*failure_));
    // The first text is kept, since the stream is still writing from it.
    while (outgoing_.size() > 1) outgoing_.pop_back();
}

void WebSocketConnection::close(CloseCode code) {
    bool opening = static_cast<bool>(opened_);
    bool first = !failure_;
    if (first) endWith("Spojení je zavřené."_sentence);
    failWaiting();
    if (code == CloseCode::abnormal || opening)
        reset();
    else if (first)
        sayGoodbye(code);
}

void WebSocketConnection::sayGoodbye(CloseCode code) {
    auto self = shared_from_this();
    timer_.expires_after(network_.limits().closing);
    timer_.async_wait([self](error_code error) {
        if (!error) self->drop();
    });
    stream_.async_close({static_cast<std::uint16_t>(code)}, [self](error_code) { self->drop(); });
}

void WebSocketConnection::release() {
    if (!failure_) close(CloseCode::abnormal);
    letGo();
}

/// Ends with a TCP reset, so that the peer does not see an orderly end.
void WebSocketConnection::reset() {
    // Has no effect on a socket that is not connected.
    error_code refused;
    if (!dropped_) std::ignore = tcp().socket().set_option(asio::socket_base::linger(true, 0), refused);
    drop();
}

} // namespace morvex
