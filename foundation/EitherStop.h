#pragma once

#include <functional>
#include <stop_token>
#include <utility>

namespace morvex {

/// A stop that is requested as soon as one of two others is, while this object lives.
class EitherStop {
  public:
    EitherStop(std::stop_token first, std::stop_token second)
        : first_(std::move(first), request()), second_(std::move(second), request()) {}

    [[nodiscard]] std::stop_token token() const { return source_.get_token(); }

  private:
    std::function<void()> request() {
        return [source = source_]() mutable { source.request_stop(); };
    }

    std::stop_source source_;
    std::stop_callback<std::function<void()>> first_;
    std::stop_callback<std::function<void()>> second_;
};

} // namespace morvex
