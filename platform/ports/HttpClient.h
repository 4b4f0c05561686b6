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
    std::chrono::milliseconds timeLimit{15'000}; ///< for the whole exchange, name look-up included
    std::size_t replyLimit = 1024 * 1024;        ///< bytes of the reply's body; a longer one is a failure
    std::stop_token stop{};                      ///< ends the exchange, which fails then
};

struct HttpReply {
    int status = 0; ///< 0 when the other end answered, but not in HTTP
    std::string body;
    std::vector<std::pair<std::string, std::string>>
        headers{}; ///< in their order, values trimmed; no trailers

    /// Bytes of all names and values together; more is a failure.
    static constexpr std::size_t headersLimit = 64 * 1024;

    /// The first one of this name, in any letters (RFC 9110, section 5.1). Null without one.
    [[nodiscard]] const std::string* header(std::string_view name) const;
};

/// One HTTP exchange. No cookies, no cache; redirects are not followed; certificates are verified.
/// From any thread; the caller resumes where it waited.
class HttpClient {
  public:
    virtual ~HttpClient() = default;

    /// Any HTTP status is success here; a redirect, too, is a reply with its status and headers. Fails with
    /// `NetworkError`, also once `stop` was requested or the client has gone.
    virtual Task<Result<HttpReply>> send(HttpRequest request) = 0;
};

} // namespace morvex
