#include "relay/HttpSession.h"

#include "relay/SocketSession.h"
#include "shared/wire/RelayCalls.h"

#include <boost/asio/as_tuple.hpp>
#include <boost/asio/ip/address.hpp>
#include <boost/asio/use_awaitable.hpp>
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

std::string_view pathOf(std::string_view target) {
    return target.substr(0, target.find('?'));
}

/// The value of `v` in the address; empty without one.
std::string_view versionOf(std::string_view target) {
    auto rest = target.substr(std::min(target.find('?'), target.size()));
    while (!rest.empty()) {
        rest.remove_prefix(1);
        const auto item = rest.substr(0, rest.find('&'));
        if (item.starts_with("v=")) return item.substr(2);
        rest.remove_prefix(item.size());
    }
    return {};
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

http::response<http::string_body> response(CallReply reply) {
    http::response<http::string_body> response{static_cast<http::status>(reply.status), 11};
    response.keep_alive(false);
    response.set(http::field::cache_control, "no-store");
    if (reply.status == 405) response.set(http::field::allow, "POST");
    if (reply.status == 426) response.set(http::field::upgrade, "websocket");
    if (reply.status == 429) response.set(http::field::retry_after, "60");
    if (!reply.body.empty()) response.set(http::field::content_type, "application/json");
    response.body() = std::move(reply.body);
    response.prepare_payload();
    return response;
}

} // namespace

HttpSession::HttpSession(asio::ip::tcp::socket socket, asio::ssl::context* context,
                         std::shared_ptr<RelayState> state)
    : state_(std::move(state)), slot_(state_), stream_(std::move(socket), context) {}

asio::awaitable<void> HttpSession::serve(std::unique_ptr<HttpSession> self) {
    self->stream_.connection().expiresAfter(self->state_->limits.request);
    if (!co_await self->stream_.handshake()) co_return;
    Parser parser;
    parser.header_limit(static_cast<std::uint32_t>(self->state_->limits.httpHeader));
    parser.body_limit(self->state_->limits.httpBody);
    auto [error, count] = co_await http::async_read(self->stream_, self->buffer_, parser, asTuple);
    if (error) {
        if (const auto cause = refusalFor(error)) co_await self->answer(refusal(*cause));
        co_return;
    }
    auto request = parser.release();
    const bool wantsSocket = relayPaths::isAt(pathOf(request.target()), relayPaths::socket) &&
                             beast::websocket::is_upgrade(request);
    if (wantsSocket && self->buffer_.size() == 0)
        self->becomeSocket(std::move(request));
    else
        co_await self->answer(self->call(request));
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
    const auto now = std::chrono::time_point_cast<Date::duration>(std::chrono::system_clock::now());
    auto reply = state_->calls.answer(path, request.body(), now);
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
    auto message = response(std::move(reply));
    auto [error, count] = co_await http::async_write(stream_, message, asTuple);
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
