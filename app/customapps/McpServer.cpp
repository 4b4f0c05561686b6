#include "app/customapps/McpServer.h"

#include "app/customapps/ServiceError.h"
#include "shared/base/Base64.h"
#include "shared/base/SystemTrouble.h"
#include "shared/base/Try.h"

#include <algorithm>
#include <chrono>

namespace morvex {

namespace {

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds requestLimit = 20s;

// Versions of the protocol.
constexpr std::string_view sessionVersion = "2025-06-18";
constexpr std::string_view newestVersion = "2026-07-28";

constexpr int badRequest = 400;
constexpr int notFound = 404;

// Codes of JSON-RPC errors.
constexpr std::int64_t noSession = -32000;          ///< a session is wanted, or is gone
constexpr std::int64_t unsupportedVersion = -32022; ///< the versions that are supported are told

boost::json::object clientInfo() {
    return {{"name", "Morvex"}, {"version", "1"}};
}

boost::json::object requestMeta() {
    return {{"io.modelcontextprotocol/protocolVersion", newestVersion},
            {"io.modelcontextprotocol/clientInfo", clientInfo()},
            {"io.modelcontextprotocol/clientCapabilities", boost::json::object()}};
}

bool isPrintableAscii(std::string_view text) {
    return std::ranges::all_of(text, [](char character) { return character >= ' ' && character <= '~'; });
}

/// A name as a header's value: whatever a header cannot hold is encoded.
std::string headerText(const std::string& name) {
    constexpr std::string_view encodedStart = "=?base64?";
    const bool isPlain = !name.empty() && isPrintableAscii(name) && !name.starts_with(' ') &&
                         !name.ends_with(' ') && !name.starts_with(encodedStart);
    return isPlain ? name : std::string(encodedStart) + base64Encode(asBytes(name)) + "?=";
}

/// The value of a header or a field that is sent back to the server; empty if it cannot be sent.
std::string tokenFrom(std::string_view text) {
    constexpr std::size_t longest = 1024;
    return text.size() <= longest && isPrintableAscii(text) ? std::string(text) : std::string();
}

/// The words of a server must not carry a token to the phone.
Error withoutToken(Error error, const std::string& token) {
    const auto* service = error.as<ServiceError>();
    const auto* server = service ? std::get_if<ServiceError::Server>(&service->value) : nullptr;
    if (!server || token.empty() || !server->message.contains(token)) return error;
    return ServiceError{ServiceError::Server{"Neznámá chyba."}};
}

std::string textIn(const boost::json::object& object, std::string_view name) {
    const auto* value = object.if_contains(name);
    return value && value->is_string() ? std::string(value->get_string()) : std::string();
}

/// Of the next page; empty if there is none, or one that is too long to be sent back.
std::string cursorIn(const boost::json::object& result) {
    constexpr std::size_t longest = 1024;
    auto cursor = textIn(result, "nextCursor");
    return cursor.size() <= longest ? cursor : std::string();
}

} // namespace

Task<Result<ToolList>> McpServer::listTools(Caller caller) {
    ToolList tools;
    McpQuestion question{"tools/list", {}};
    for (int page = 1;; ++page) {
        CO_TRY(auto, result, co_await ask(question, caller));
        const auto cursor = cursorIn(result);
        auto more = co_await runOn(services_.workers, [&result] { return toolList(result); });
        std::ranges::move(more, std::back_inserter(tools));
        const bool isLast = manner_ == Manner::plain || cursor.empty() || page == mostPages ||
                            tools.size() >= customToolLimits::mostOfApp;
        if (isLast) co_return tools;
        question.params["cursor"] = cursor;
    }
}

Task<Result<boost::json::object>> McpServer::callTool(std::string name, boost::json::object arguments,
                                                      Caller caller) {
    co_return co_await ask({"tools/call", {{"name", std::move(name)}, {"arguments", std::move(arguments)}}},
                           std::move(caller));
}

Task<Result<boost::json::object>> McpServer::ask(McpQuestion question, Caller caller) {
    const auto token = caller.token;
    auto result = co_await askUnchecked(std::move(question), std::move(caller));
    if (!result) co_return fail(withoutToken(std::move(result).error(), token));
    co_return result;
}

Task<Result<boost::json::object>> McpServer::askUnchecked(McpQuestion question, Caller caller) {
    CO_TRY(auto, answer, co_await askOnce(question, caller));
    if (isToBeAskedAgain(answer)) {
        CO_TRY(auto, second, co_await askOnce(std::move(question), std::move(caller)));
        answer = std::move(second);
        if (isRefusal(answer.reply)) forgetManner();
    }
    co_return co_await read(std::move(answer.reply));
}

Task<Result<McpServer::Answer>> McpServer::askOnce(McpQuestion question, Caller caller) {
    if (manner_ == Manner::session) {
        const auto turn = co_await starting_.take();
        if (manner_ == Manner::session && version_.empty()) CO_CHECK(co_await startSession(caller));
    }
    Answer answer{{}, manner_, sessionID_};
    auto headers = headersFor(question);
    if (manner_ == Manner::newest) question.params["_meta"] = requestMeta();
    auto body = mcpRequest(++services_.sequence, question);
    CO_TRY(auto, reply, co_await post(std::move(body), std::move(headers), std::move(caller)));
    answer.reply = std::move(reply);
    co_return answer;
}

Task<Result<void>> McpServer::startSession(Caller caller) {
    const McpQuestion question{"initialize",
                               {{"protocolVersion", sessionVersion},
                                {"capabilities", boost::json::object()},
                                {"clientInfo", clientInfo()}}};
    CO_TRY(auto, reply, co_await post(mcpRequest(++services_.sequence, question), {}, caller));
    const auto* header = reply.header("Mcp-Session-Id");
    const bool hasID = header != nullptr;
    auto id = hasID ? tokenFrom(*header) : std::string();
    auto result = co_await read(std::move(reply));
    auto version = result ? tokenFrom(textIn(*result, "protocolVersion")) : std::string();
    if (result && (version.empty() || (hasID && id.empty())))
        result = fail(ServiceError{ServiceError::InvalidResponse{}});
    if (!result) {
        forgetManner();
        co_return fail(std::move(result).error());
    }
    sessionID_ = std::move(id);
    version_ = std::move(version);
    CO_CHECK(co_await post(mcpNotification("notifications/initialized"), headersFor({}), std::move(caller)));
    co_return Result<void>{};
}

Task<Result<HttpReply>> McpServer::post(std::string body, Headers headers, Caller caller) {
    const auto left =
        std::chrono::duration_cast<std::chrono::milliseconds>(caller.deadline - services_.clock.sinceBoot());
    if (left <= 0ms) co_return fail(NetworkError{popis(SystemTrouble::timedOut)});
    HttpRequest request{.method = "POST",
                        .url = url_,
                        .body = std::move(body),
                        .timeLimit = std::min(left, requestLimit),
                        .replyLimit = mcpReplyLimit,
                        .stop = std::move(caller.stop)};
    if (!caller.token.empty()) request.headers.emplace_back("Authorization", "Bearer " + caller.token);
    request.headers.emplace_back("Content-Type", "application/json");
    request.headers.emplace_back("Accept", "application/json, text/event-stream");
    std::ranges::move(headers, std::back_inserter(request.headers));
    co_return co_await services_.http.send(std::move(request));
}

Task<Result<boost::json::object>> McpServer::read(HttpReply reply) {
    return runOn(services_.workers, [reply = std::move(reply)] { return mcpResult(reply); });
}

std::optional<McpServer::Manner> McpServer::mannerWantedBy(const HttpReply& reply) {
    if (reply.status != badRequest) return std::nullopt;
    const auto refusal = mcpRefusal(reply);
    if (!refusal) return std::nullopt;
    if (std::ranges::find(refusal->supported, newestVersion) != refusal->supported.end())
        return Manner::newest;
    // Versions are dates.
    const auto isOlder = [](const std::string& version) { return version < newestVersion; };
    if (refusal->code == unsupportedVersion && std::ranges::none_of(refusal->supported, isOlder))
        return std::nullopt;
    return Manner::session;
}

bool McpServer::isRefusal(const HttpReply& reply) {
    return reply.status == badRequest || reply.status == notFound;
}

bool McpServer::hasLostSession(const HttpReply& reply) {
    if (reply.status == notFound) return true;
    const auto refusal = reply.status == badRequest ? mcpRefusal(reply) : std::nullopt;
    return refusal && refusal->code == noSession;
}

bool McpServer::isToBeAskedAgain(const Answer& answer) {
    if (answer.manner == Manner::plain) {
        const auto wanted = mannerWantedBy(answer.reply);
        // Another question may have found the manner meanwhile.
        if (wanted && manner_ == Manner::plain) manner_ = *wanted;
        return wanted.has_value();
    }
    if (answer.manner == Manner::session && hasLostSession(answer.reply)) {
        if (answer.sessionID == sessionID_) version_.clear();
        return true;
    }
    if (isRefusal(answer.reply)) forgetManner();
    return false;
}

void McpServer::forgetManner() {
    manner_ = Manner::plain;
    version_.clear();
    sessionID_.clear();
}

McpServer::Headers McpServer::headersFor(const McpQuestion& question) const {
    Headers headers;
    if (manner_ == Manner::session) {
        if (!sessionID_.empty()) headers.emplace_back("Mcp-Session-Id", sessionID_);
        headers.emplace_back("MCP-Protocol-Version", version_);
    } else if (manner_ == Manner::newest) {
        headers.emplace_back("MCP-Protocol-Version", newestVersion);
        headers.emplace_back("Mcp-Method", question.method);
        if (const auto name = textIn(question.params, "name"); !name.empty())
            headers.emplace_back("Mcp-Name", headerText(name));
    }
    return headers;
}

} // namespace morvex
