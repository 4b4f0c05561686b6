#pragma once

#include "platform/ports/HttpClient.h"

#include <deque>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace morvex {

/// Returns the answers that the test prepared, in order, then a network failure. An exchange that is stopped
/// before it begins fails and leaves them to later ones.
class ScriptedHttp final : public HttpClient {
  public:
    Task<Result<HttpReply>> send(HttpRequest request) override {
        const auto stop = request.stop;
        requests.push_back(std::move(request));
        if (stop.stop_requested() || replies.empty())
            co_return fail(NetworkError{Sentence("síť neodpovídá")});
        HttpReply reply = std::move(replies.front());
        replies.pop_front();
        co_return reply;
    }

    std::deque<HttpReply> replies;
    std::vector<HttpRequest> requests;
};

} // namespace morvex
