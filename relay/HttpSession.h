#pragma once

#include "relay/PairCalls.h"
#include "relay/PeerStream.h"
#include "relay/Places.h"
#include "relay/RelayState.h"

#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http/message.hpp>
#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/string_body.hpp>

#include <memory>
#include <optional>
#include <string_view>

namespace morvex {

/// A new connection. It carries one request, which is answered or becomes a WebSocket, and no second one.
/// Owned by its coroutine, on the relay's thread.
class HttpSession {
  public:
    HttpSession(boost::asio::ip::tcp::socket socket, boost::asio::ssl::context* context,
                std::shared_ptr<RelayState> state, Places::Place place);

    static boost::asio::awaitable<void> serve(std::unique_ptr<HttpSession> self);

  private:
    using Parser = boost::beast::http::request_parser<boost::beast::http::string_body>;
    using Request = Parser::value_type;

    boost::asio::awaitable<void> answerOne();
    boost::asio::awaitable<void> answer(CallReply reply);
    boost::asio::awaitable<void> answerError(boost::beast::error_code error);
    [[nodiscard]] std::optional<CallRefusal> faultIn(const Parser& parser) const;
    CallReply call(const Request& request);
    CallReply callAllowed(const Request& request, std::string_view path);
    /// Why the limits for this address refuse another call now; nothing if they do not.
    std::optional<CallRefusal> refusalByLimit(std::string_view path);
    [[nodiscard]] bool mayLogIn() const;
    /// Returns whether the first byte arrived before the place was taken away.
    boost::asio::awaitable<bool> hearsAnything();
    void becomeSocket(Request upgrade);

    std::shared_ptr<RelayState> state_;
    Places::Place place_;
    PeerStream stream_;
    boost::beast::flat_buffer buffer_;
    bool isHeadWanted_ = false; ///< then the answer has no content (RFC 9110, section 9.3.2)
};

} // namespace morvex
