#include "app/customapps/McpMessages.h"

#include "app/customapps/ServiceError.h"
#include "foundation/Text.h"
#include "foundation/TextFilter.h"
#include "shared/base/Utf8.h"
#include "shared/wire/Json.h"

#include <utility>

namespace morvex {

namespace {

/// Bytes of a body that is looked at for a refusal.
constexpr std::size_t longestRefusal = std::size_t{64} * 1024;

/// A list of tools with large schemas has more than other documents.
constexpr std::size_t mostValues = std::size_t{256} * 1024;

constexpr int unauthorized = 401;
constexpr int forbidden = 403;

std::unexpected<Error> invalidResponse() {
    return fail(ServiceError{ServiceError::InvalidResponse{}});
}

Result<void> checkStatus(int status) {
    if (status == 0) return invalidResponse();
    if (status == unauthorized || status == forbidden)
        return fail(ServiceError{ServiceError::Authentication{}});
    if (status < 200 || status > 299) return fail(ServiceError{ServiceError::Http{status}});
    return {};
}

std::string_view trimBlanks(std::string_view text) {
    const auto isBlank = [](char character) { return character == ' ' || character == '\t'; };
    while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
    return text;
}

bool isEventStream(const HttpReply& reply) {
    const auto* type = reply.header("Content-Type");
    return type && lowerCase(*type).contains("text/event-stream");
}

const boost::json::object* member(const boost::json::object& object, std::string_view name) {
    const auto* value = object.if_contains(name);
    return value ? value->if_object() : nullptr;
}

std::string messageOf(const boost::json::object& error) {
    const auto* message = error.if_contains("message");
    return message && message->is_string() ? foreignWords(message->get_string()) : "Neznámá chyba.";
}

} // namespace

std::string mcpRequest(std::int64_t sequence, const McpQuestion& question) {
    return encode(boost::json::object{
        {"jsonrpc", "2.0"}, {"id", sequence}, {"method", question.method}, {"params", question.params}});
}

std::string mcpNotification(std::string_view method) {
    return encode(boost::json::object{{"jsonrpc", "2.0"}, {"method", method}});
}

std::string_view mcpDocument(const HttpReply& reply) {
    constexpr std::string_view data = "data:";
    std::string_view rest = reply.body;
    if (!isEventStream(reply) || !isValidUtf8(rest)) return rest;
    for (;;) {
        const auto lineEnd = rest.rfind('\n');
        const auto line = rest.substr(lineEnd + 1);
        if (line.starts_with(data)) return trimBlanks(line.substr(data.size()));
        if (lineEnd == std::string_view::npos) return reply.body;
        rest = rest.substr(0, lineEnd);
    }
}

Result<boost::json::object> mcpResult(const HttpReply& reply) {
    if (auto checked = checkStatus(reply.status); !checked)
        return std::unexpected(std::move(checked).error());
    auto document = parseJson(mcpDocument(reply), {.values = mostValues});
    auto* message = document ? document->if_object() : nullptr;
    if (!message) return invalidResponse();
    if (const auto* error = member(*message, "error"))
        return fail(ServiceError{ServiceError::Server{messageOf(*error)}});
    if (!member(*message, "result")) return invalidResponse();
    return std::move(message->at("result").as_object());
}

std::optional<McpRefusal> mcpRefusal(const HttpReply& reply) {
    if (reply.body.size() > longestRefusal) return std::nullopt;
    const auto document = parseJson(mcpDocument(reply));
    const auto* message = document ? document->if_object() : nullptr;
    const auto* error = message ? member(*message, "error") : nullptr;
    const auto* code = error ? error->if_contains("code") : nullptr;
    if (!code || !code->is_int64()) return std::nullopt;
    McpRefusal refusal{code->get_int64(), {}};
    const auto* data = member(*error, "data");
    const auto* supported = data ? data->if_contains("supported") : nullptr;
    if (supported && supported->is_array())
        for (const auto& version : supported->get_array())
            if (version.is_string()) refusal.supported.emplace_back(version.get_string());
    return refusal;
}

} // namespace morvex
