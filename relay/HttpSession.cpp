#include "relay/HttpSession.h"

#include "relay/HttpReply.h"
#include "relay/HttpRules.h"
#include "relay/SocketSession.h"
#include "shared/wire/RelayCalls.h"

#include <boost/asio/as_tuple.hpp>
#include <boost/asio/use_awaitable.hpp>
#include <boost/asio/write.hpp>
#include <boost/beast/core/string.hpp>
#include <boost/beast/http/error.hpp>
#include <boost/beast/http/read.hpp>
#include <boost/beast/http/write.hpp>
#include <boost/beast/websocket/rfc6455.hpp>

#include <algorithm>
#include <array>
#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace morvex {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = boost::beast::http;

namespace {

constexpr auto asTuple = asio::as_tuple(asio::use_awaitable);

/// In bytes. A parser buffers at most the head or one chunk header at a time.
constexpr std::size_t bufferLimit(const RelayLimits& limits) {
    return 2 * limits.httpHeader;
}

/// RFC 9110, section 15.2.1.
constexpr std::string_view carryOn = "HTTP/1.1 100 Continue\r\n\r\n";

std::string_view pathOf(std::string_view target) {
    const auto local = httpRules::localPart(target);
    return local.substr(0, local.find('?'));
}

/// The value of `v` in the query; empty if there is none.
std::string_view versionOf(std::string_view target) {
    target = httpRules::localPart(target);
    auto rest = target.substr(std::min(target.find('?'), target.size()));
    while (!rest.empty()) {
        rest.remove_prefix(1);
        const auto item = rest.substr(0, rest.find('&'));
        if (item.starts_with("v=")) return item.substr(2);
        rest.remove_prefix(item.size());
    }
    return {};
}

bool wantsSocket(const httpRules::Head& head) {
    return relayPaths::isAt(pathOf(head.target()), relayPaths::socket) && beast::websocket::is_upgrade(head);
}

Date today() {
    return std::chrono::time_point_cast<Date::duration>(std::chrono::system_clock::now());
}

bool isJson(std::string_view contentType) {
    return beast::iequals(contentType.substr(0, contentType.find_first_of("; ")), "application/json");
}

/// Nothing if nobody is left to answer.
std::optional<CallRefusal> refusalFor(beast::error_code error) {
    if (error == http::error::body_limit) return CallRefusal::tooLarge;
    if (error == http::error::header_limit || error == http::error::buffer_overflow)
        return CallRefusal::tooLarge;
    if (error == http::error::end_of_stream || error == http::error::partial_message) return std::nullopt;
    if (error.category() == http::make_error_code(http::error::bad_method).category())
        return CallRefusal::unreadable;
    return std::nullopt;
}

} // namespace

HttpSession::HttpSession(asio::ip::tcp::socket socket, asio::ssl::context* context,
                         std::shared_ptr<RelayState> state, Places::Place place)
    : state_(std::move(state)),
      place_(std::move(place)),
      stream_(std::move(socket), context),
      buffer_(bufferLimit(state_->limits)) {
    place_.onEviction([this] { stream_.connection().close(); });
}

asio::awaitable<void> HttpSession::serve(std::unique_ptr<HttpSession> self) {
    if (!co_await self->hearsAnything()) co_return;
    self->stream_.connection().expiresAfter(self->state_->limits.handshake);
    if (!co_await self->stream_.handshake()) co_return;
    self->stream_.connection().expiresAfter(self->state_->limits.request);
    co_await self->answerOne();
}

asio::awaitable<void> HttpSession::answerOne() {
    Parser parser;
    parser.header_limit(static_cast<std::uint32_t>(state_->limits.httpHeader));
    parser.body_limit(state_->limits.httpBody);
    auto [headError, headSize] = co_await http::async_read_header(stream_, buffer_, parser, asTuple);
    isHeadWanted_ = parser.get().method() == http::verb::head;
    if (headError) co_return co_await answerError(headError);
    if (const auto fault = faultIn(parser)) co_return co_await answer(refusal(*fault));
    if (wantsSocket(parser.get())) {
        if (!mayLogIn()) co_return co_await answer(refusal(CallRefusal::tooMany));
        co_return becomeSocket(parser.release());
    }
    if (httpRules::waitsForContinue(parser.get()) && !parser.is_done() && buffer_.size() == 0)
        co_await asio::async_write(stream_, asio::buffer(carryOn), asTuple);
    auto [error, size] = co_await http::async_read(stream_, buffer_, parser, asTuple);
    if (error) co_return co_await answerError(error);
    co_await answer(call(parser.get()));
}

std::optional<CallRefusal> HttpSession::faultIn(const Parser& parser) const {
    if (const auto fault = httpRules::faultOf(parser.get())) return fault;
    if (!wantsSocket(parser.get())) return std::nullopt;
    // The client must not send anything before the answer (RFC 6455, section 4.1).
    if (!parser.is_done() || buffer_.size() > 0) return CallRefusal::unreadable;
    return httpRules::faultOfUpgrade(parser.get());
}

asio::awaitable<void> HttpSession::answerError(beast::error_code error) {
    if (const auto cause = refusalFor(error)) co_await answer(refusal(*cause));
}

asio::awaitable<bool> HttpSession::hearsAnything() {
    auto [error] = co_await stream_.connection().socket().async_wait(asio::socket_base::wait_read, asTuple);
    place_.hasSpoken();
    co_return !error;
}

void HttpSession::becomeSocket(Request upgrade) {
    std::make_shared<SocketSession>(std::move(stream_), state_, std::move(place_),
                                    versionOf(upgrade.target()))
        ->start(std::move(upgrade));
}

CallReply HttpSession::call(const Request& request) {
    const auto path = pathOf(request.target());
    if (relayPaths::isAt(path, relayPaths::socket)) return refusal(CallRefusal::notSocket);
    if (!PairCalls::knows(path)) return refusal(CallRefusal::unknownCall);
    if (request.method() != http::verb::post) return refusal(CallRefusal::wrongMethod);
    if (!isJson(request[http::field::content_type])) return refusal(CallRefusal::wrongContentType);
    if (const auto cause = refusalByLimit(path)) return refusal(*cause);
    return callAllowed(request, path);
}

CallReply HttpSession::callAllowed(const Request& request, std::string_view path) {
    auto reply = state_->calls.answer(path, request.body(), today());
    const auto kind = std::string{path} + ": " + std::to_string(reply.status);
    const auto trouble = reply.trouble.empty() ? "" : ": " + reply.trouble;
    state_->events.note(kind, place_.origin(), kind + trouble, EventLog::Moment::clock::now());
    if (reply.revoked) state_->switchboard.revoke(*reply.revoked);
    return reply;
}

std::optional<CallRefusal> HttpSession::refusalByLimit(std::string_view path) {
    const auto now = OriginLimit::Moment::clock::now();
    if (!state_->callLimit.admits(place_.origin(), now)) return CallRefusal::tooMany;
    if (PairCalls::creates(path) && !state_->creationLimit.admits(place_.origin(), now))
        return CallRefusal::tooManyPairs;
    return std::nullopt;
}

bool HttpSession::mayLogIn() const {
    return state_->loginLimit.hasRoom(place_.origin(), OriginLimit::Moment::clock::now());
}

asio::awaitable<void> HttpSession::answer(CallReply reply) {
    stream_.connection().expiresAfter(state_->limits.closing);
    const auto message = httpReply(std::move(reply), today());
    http::response_serializer<http::string_body> serializer(message);
    auto [error, count] = isHeadWanted_ ? co_await http::async_write_header(stream_, serializer, asTuple)
                                        : co_await http::async_write(stream_, serializer, asTuple);
    if (error) co_return;
    co_await stream_.sayEnd();
    // Reads the remaining bytes: closing the socket before would reset the connection and lose the answer.
    std::array<char, 4 * kibibyte> discarded;
    for (;;) {
        auto [end, more] =
            co_await stream_.connection().socket().async_read_some(asio::buffer(discarded), asTuple);
        if (end) co_return;
    }
}

} // namespace morvex
