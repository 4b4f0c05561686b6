#pragma once

#include "foundation/Task.h"
#include "platform/ports/NetworkError.h"
#include "shared/base/Error.h"

#include <chrono>
#include <cstddef>
#include <string>
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
};

struct HttpReply {
    int status = 0; ///< 0 when the other end answered, but not in HTTP
    std::string body;
};

/// One HTTP exchange. No cookies, no cache; redirects are not followed; certificates are verified.
/// From any thread; the caller resumes where it waited.
class HttpClient {
  public:
    virtual ~HttpClient() = default;

    /// Any HTTP status is success here. Fails with `NetworkError`.
    virtual Task<Result<HttpReply>> send(HttpRequest request) = 0;
};

} // namespace morvex
