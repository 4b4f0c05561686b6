#pragma once

#include "platform/ports/HttpClient.h"

#include <atomic>
#include <chrono>
#include <utility>

namespace morvex {

/// Wraps another client and reduces the time limits of the callers, so that a test sees a limit take effect.
/// May be adjusted from any thread.
class HastyHttp final : public HttpClient {
  public:
    explicit HastyHttp(HttpClient& http) : http_(http) {}

    Task<Result<HttpReply>> send(HttpRequest request) override {
        allowed_ = request.timeLimit;
        request.timeLimit /= divisor_.load();
        co_return co_await http_.send(std::move(request));
    }

    void divideLimits(int by) { divisor_ = by; }

    /// The time limit that the last caller set.
    [[nodiscard]] std::chrono::milliseconds allowed() const { return allowed_; }

  private:
    HttpClient& http_;
    std::atomic<int> divisor_ = 1;
    std::atomic<std::chrono::milliseconds> allowed_{};
};

} // namespace morvex
