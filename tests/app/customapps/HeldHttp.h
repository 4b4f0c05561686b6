#pragma once

#include "foundation/OneShot.h"
#include "platform/ports/HttpClient.h"

#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <utility>
#include <vector>

namespace morvex {

/// Answers each request when the test says so, and fails one whose stop is requested.
class HeldHttp final : public HttpClient {
  public:
    Task<Result<HttpReply>> send(HttpRequest request) override {
        auto shot = std::make_shared<OneShot<Result<HttpReply>>>();
        auto stop = request.stop;
        requests.push_back(std::move(request));
        answers_.push_back(shot);
        const std::stop_callback onStop(stop,
                                        [shot] { shot->answer(fail(NetworkError{Sentence("zastaveno")})); });
        co_return co_await shot->wait();
    }

    /// Answers the request with this number.
    void answer(std::size_t number, HttpReply reply) { answers_.at(number)->answer(std::move(reply)); }

    void failRequest(std::size_t number) {
        answers_.at(number)->answer(fail(NetworkError{Sentence("síť neodpovídá")}));
    }

    std::vector<HttpRequest> requests;

  private:
    std::vector<std::shared_ptr<OneShot<Result<HttpReply>>>> answers_;
};

} // namespace morvex
