#include "relay/HttpSession.h"

#include "relay/HttpReply.h"
#include "relay/HttpRules.h"
#include "relay/SocketSession.h"
#include "shared/wire/RelayCalls.h"

#include <boost/asio/as_tuple.hpp>
#include <boost/asio/ip/address.hpp>
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
#include <string_view>
#include <utility>

namespace morvex {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = boost::beast::http;

namespace {

constexpr auto asTuple = asio::as_tuple(asio::use_awaitable);

/// The head, or what announces a chunk: a parser keeps no more than one of them.
constexpr std::size_t bufferLimit(const RelayLimits& limits) {
    return 2 * limits.httpHeader;
}

/// RFC 9110, section 15.2.1.
constexpr std::string_view carryOn = "HTTP/1.1 100 Continue\r\n\r\n";

std::string_view pathOf(std::string_view target) {
    const auto local = httpRules::localPart(target);
    return local.substr(0, local.find('?'));
}

/// The value of `v` in the address; empty without one.
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

/// Nothing when there is nobody to answer.
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
                         std::shared_ptr<RelayState> state)
    : state_(std::move(state)),
      slot_(state_),
      stream_(std::move(socket), context),
      buffer_(bufferLimit(state_->limits)) {}

asio::awaitable<void> HttpSession::serve(std::unique_ptr<HttpSession> self) {
    self->stream_.connection().expiresAfter(self->state_->limits.request);
    if (co_await self->stream_.handshake()) co_await self->answerOne();
}

asio::awaitable<void> HttpSession::answerOne() {
    Parser parser;
    parser.header_limit(static_cast<std::uint32_t>(state_->limits.httpHeader));
    parser.body_limit(state_->limits.httpBody);
    auto [headError, headSize] = co_await http::async_read_header(stream_, buffer_, parser, asTuple);
    if (headError) co_return co_await answerError(headError);
    isHeadWanted_ = parser.get().method() == http::verb::head;
    if (const auto fault = faultIn(parser)) co_return co_await answer(refusal(*fault));
    if (wantsSocket(parser.get())) co_return becomeSocket(parser.release());
    if (httpRules::waitsForContinue(parser.get()) && !parser.is_done() && buffer_.size() == 0)
        co_await asio::async_write(stream_, asio::buffer(carryOn), asTuple);
    auto [error, size] = co_await http::async_read(stream_, buffer_, parser, asTuple);
    if (error) co_return co_await answerError(error);
    co_await answer(call(parser.get()));
}

std::optional<CallRefusal> HttpSession::faultIn(const Parser& parser) const {
    if (const auto fault = httpRules::faultOf(parser.get())) return fault;
    if (!wantsSocket(parser.get())) return std::nullopt;
    // Nothing may come before the answer (RFC 6455, section 4.1).
    if (!parser.is_done() || buffer_.size() > 0) return CallRefusal::unreadable;
    return httpRules::faultOfUpgrade(parser.get());
}

asio::awaitable<void> HttpSession::answerError(beast::error_code error) {
    if (const auto cause = refusalFor(error)) co_await answer(refusal(*cause));
}

void HttpSession::becomeSocket(Request upgrade) {
    std::make_shared<SocketSession>(std::move(stream_), state_, std::move(slot_), versionOf(upgrade.target()))
        ->start(std::move(upgrade));
}

CallReply HttpSession::call(const Request& request) {
    const auto path = pathOf(request.target());
    if (relayPaths::isAt(path, relayPaths::socket)) return refusal(CallRefusal::notSocket);
    if (!PairCalls::knows(path)) return refusal(CallRefusal::unknownCall);
    if (request.method() != http::verb::post) return refusal(CallRefusal::wrongMethod);
    if (!isJson(request[http::field::content_type])) return refusal(CallRefusal::wrongContentType);
    if (isTooMany()) return refusal(CallRefusal::tooMany);
    return callAllowed(request, path);
}

CallReply HttpSession::callAllowed(const Request& request, std::string_view path) {
    auto reply = state_->calls.answer(path, request.body(), today());
    const auto trouble = reply.trouble.empty() ? "" : ": " + reply.trouble;
    state_->log(std::string{path} + ": " + std::to_string(reply.status) + trouble);
    if (reply.revoked) state_->switchboard.revoke(*reply.revoked);
    return reply;
}

bool HttpSession::isTooMany() {
    const auto address = limitedAddress();
    return !address.empty() && !state_->rateLimit.admits(address, RateLimit::Moment::clock::now());
}

std::string HttpSession::limitedAddress() {
    beast::error_code error;
    auto address = stream_.connection().socket().remote_endpoint(error).address();
    if (address.is_v6() && address.to_v6().is_v4_mapped())
        address = asio::ip::make_address_v4(asio::ip::v4_mapped, address.to_v6());
    if (address.is_loopback()) return {};
    if (address.is_v4()) return address.to_string();
    // Whoever has one address of a /64 has all of them.
    auto bytes = address.to_v6().to_bytes();
    std::fill(bytes.begin() + 8, bytes.end(), std::uint8_t{0});
    return asio::ip::make_address_v6(bytes).to_string();
}

asio::awaitable<void> HttpSession::answer(CallReply reply) {
    stream_.connection().expiresAfter(state_->limits.closing);
    const auto message = httpReply(std::move(reply), today());
    http::response_serializer<http::string_body> serializer(message);
    auto [error, count] = isHeadWanted_ ? co_await http::async_write_header(stream_, serializer, asTuple)
                                        : co_await http::async_write(stream_, serializer, asTuple);
    if (error) co_return;
    co_await stream_.sayEnd();
    // Closing over unread bytes would reset the connection and take the answer with it.
    std::array<char, 4 * kibibyte> discarded;
    for (;;) {
        auto [end, more] =
            co_await stream_.connection().socket().async_read_some(asio::buffer(discarded), asTuple);
        if (end) co_return;
    }
}

} // namespace morvex
