#pragma once

#include "platform/ports/HttpClient.h"
#include "shared/base/Error.h"

#include <boost/json/object.hpp>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace morvex {

// The messages of the Model Context Protocol (MCP) over HTTP: JSON-RPC 2.0, one message a request.

/// Limit of a reply in bytes.
inline constexpr std::size_t mcpReplyLimit = std::size_t{4} * 1024 * 1024;

/// What a client asks of a server.
struct McpQuestion {
    std::string method;
    boost::json::object params;
};

/// The body of a request that is answered.
std::string mcpRequest(std::int64_t sequence, const McpQuestion& question);

/// The body of a message that nobody answers.
std::string mcpNotification(std::string_view method);

/// The document in the body of a reply. In an event stream (`text/event-stream`) it is the last line of data;
/// a stream without any, or one that is not UTF-8, counts as the document.
std::string_view mcpDocument(const HttpReply& reply);

/// The `result` of a reply. Fails with `ServiceError`. An `error` that is an object wins over a result. May
/// take some milliseconds for a long reply.
Result<boost::json::object> mcpResult(const HttpReply& reply);

/// Why a server refused a request as a whole.
struct McpRefusal {
    std::int64_t code = 0;
    std::vector<std::string> supported; ///< versions of the protocol that the server names instead
};

/// The JSON-RPC error that the body of a reply holds, whatever the status. A long body counts as none.
std::optional<McpRefusal> mcpRefusal(const HttpReply& reply);

} // namespace morvex
