#pragma once

#include "app/customapps/CustomTools.h"
#include "app/customapps/McpMessages.h"
#include "foundation/Clock.h"
#include "foundation/Task.h"
#include "foundation/Turns.h"
#include "platform/ports/HttpClient.h"

#include <boost/json/object.hpp>

#include <cstdint>
#include <optional>
#include <stop_token>
#include <string>
#include <utility>
#include <vector>

namespace morvex {

/// The server of one custom app, and how it wants to be asked. The first question is a plain one: one POST
/// without a handshake, which most servers answer. Only a server that refuses that with status 400 and a
/// JSON-RPC error is asked in another manner:
///
///     plain ──400, the newest protocol is supported──▶ newest: headers and `_meta` in each request
///       │ └───400, any other JSON-RPC error──────────▶ session: `initialize` once, then its session
///       ◀───── the server refuses a question in the manner, or a session
///
/// A session that the server has lost begins anew once. Main thread only; the owner keeps this object alive
/// while a question runs.
class McpServer {
  public:
    struct Services {
        HttpClient& http;
        Executor& workers; ///< long replies are read there
        Clock& clock;
        std::int64_t& sequence; ///< the last id of a request
    };

    static constexpr int mostPages = 16;

    /// Who asks, and how long.
    struct Caller {
        std::string token;         ///< empty for a server that wants none; secret
        Clock::Duration deadline;  ///< since boot; of everything the question takes
        std::stop_token stop = {}; ///< ends the question, which then fails
    };

    /// `url` is a normalized address.
    McpServer(Services services, std::string url) : services_(services), url_(std::move(url)) {}

    [[nodiscard]] const std::string& url() const { return url_; }

    /// The tools that the server names. Only in the manners with a protocol version further pages are read,
    /// at most `mostPages` in all. Fails with `ServiceError` or `NetworkError`.
    Task<Result<ToolList>> listTools(Caller caller);

    /// The result of `tools/call`. Fails like `listTools`.
    Task<Result<boost::json::object>> callTool(std::string name, boost::json::object arguments,
                                               Caller caller);

  private:
    enum class Manner { plain, session, newest };

    using Headers = std::vector<std::pair<std::string, std::string>>;

    struct Answer {
        HttpReply reply = {};
        Manner manner = Manner::plain; ///< in which the question was asked
        std::string sessionID;
    };

    /// No failure tells the token.
    Task<Result<boost::json::object>> ask(McpQuestion question, Caller caller);
    Task<Result<boost::json::object>> askUnchecked(McpQuestion question, Caller caller);
    Task<Result<Answer>> askOnce(McpQuestion question, Caller caller);
    Task<Result<void>> startSession(Caller caller);
    Task<Result<HttpReply>> post(std::string body, Headers headers, Caller caller);
    Task<Result<boost::json::object>> read(HttpReply reply);

    [[nodiscard]] static std::optional<Manner> mannerWantedBy(const HttpReply& reply);
    [[nodiscard]] static bool isRefusal(const HttpReply& reply);
    [[nodiscard]] static bool hasLostSession(const HttpReply& reply);
    /// In another manner or in a new session, which it prepares.
    [[nodiscard]] bool isToBeAskedAgain(const Answer& answer);
    void forgetManner();
    [[nodiscard]] Headers headersFor(const McpQuestion& question) const;

    Services services_;
    std::string url_;
    Manner manner_ = Manner::plain;
    std::string sessionID_; ///< empty where the server has none
    std::string version_;   ///< of the protocol in the session; empty without one
    Turns starting_;        ///< of a session
};

} // namespace morvex
