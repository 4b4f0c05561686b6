#pragma once

#include "foundation/Task.h"
#include "platform/ports/NetworkError.h"
#include "shared/base/Error.h"

#include <chrono>
#include <cstddef>
#include <stop_token>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace morvex {

struct HttpRequest {
    std::string method = "GET";
    std::string url{}; ///< http or https, nothing else
    std::vector<std::pair<std::string, std::string>> headers{};
    std::string body{};
    std::chrono::milliseconds timeLimit{15'000}; ///< for the whole exchange, including the name look-up
    std::size_t replyLimit = 1024 * 1024;        ///< bytes of the reply's body; a longer body is a failure
    std::stop_token stop{};                      ///< ends the exchange, which then fails
};

struct HttpReply {
    int status = 0; ///< 0 when the other end answered, but not in HTTP
    std::string body;
    std::vector<std::pair<std::string, std::string>>
        headers{}; ///< in the order received, values trimmed; no trailers

    /// Limit in bytes for all names and values together; more is a failure.
    static constexpr std::size_t headersLimit = 64 * 1024;

    /// The first header of this name; case is ignored (RFC 9110, section 5.1). Null if there is none.
    [[nodiscard]] const std::string* header(std::string_view name) const;
};

/// Runs HTTP exchanges. No cookies, no cache; redirects are not followed; certificates are verified. May be
/// called from any thread; the caller resumes on its own executor.
class HttpClient {
  public:
    virtual ~HttpClient() = default;

    /// Any HTTP status counts as success; a redirect is an ordinary reply with its status and headers. Fails
    /// with `NetworkError`, also after `stop` was requested or the client was destroyed.
    virtual Task<Result<HttpReply>> send(HttpRequest request) = 0;
};

} // namespace morvex
