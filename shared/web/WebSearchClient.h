#pragma once

#include "foundation/Executor.h"
#include "foundation/Task.h"
#include "shared/base/Error.h"
#include "shared/wire/Codec.h"

#include <chrono>
#include <cstddef>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace morvex {

struct WebSearchSource {
    std::string title;
    std::string url;

    bool operator==(const WebSearchSource&) const = default;
};

struct WebSearchResult {
    std::string answer;
    std::vector<WebSearchSource> sources;

    bool operator==(const WebSearchResult&) const = default;
};

extern template struct Codec<WebSearchResult>;

/// A question to the Responses API of OpenAI.
struct WebSearchRequest {
    static constexpr std::chrono::seconds timeLimit{45};
    static constexpr std::size_t replyLimit = std::size_t{4} * 1024 * 1024; ///< bytes of the body

    std::string path; ///< on the host of the service, to which it is posted
    std::vector<std::pair<std::string, std::string>> headers; ///< one of them has the key, which is secret
    std::string body;
};

struct WebSearchReply {
    int status = 0; ///< 0 when the other end did not answer in HTTP
    std::string body;
};

/// Answers a question from the public web, with sources. Keeps no state; from any thread.
class WebSearchClient {
  public:
    WebSearchClient() = delete;

    /// Sends the request and gives the reply; fails in its own words.
    using Transport = std::function<Task<Result<WebSearchReply>>(WebSearchRequest)>;

    /// Fails with `WebSearchError` or with the failure of the transport. `language` is a language code. The
    /// reply is read on `workers`.
    static Task<Result<WebSearchResult>> search(std::string query, std::string apiKey, std::string language,
                                                Transport transport, Executor& workers);

    /// Fails with `EmptyQuery`, then with `MissingKey`.
    static Result<WebSearchRequest> request(const std::string& query, const std::string& apiKey,
                                            const std::string& language);

    /// May take some milliseconds for a long reply. A failure never tells the key of the request.
    static Result<WebSearchResult> read(const WebSearchReply& reply, const std::string& apiKey);
};

} // namespace morvex
