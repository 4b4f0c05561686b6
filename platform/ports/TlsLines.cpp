#include "platform/ports/TlsLines.h"

#include "shared/base/Try.h"

#include <algorithm>
#include <utility>

namespace morvex {

Task<Result<std::string>> TlsLines::line(std::size_t longest) {
    if (failure_) co_return fail(*failure_);
    std::size_t searched = 0;
    for (;;) {
        const auto end = waiting_.find('\n', taken_ + searched);
        const auto length = end == std::string::npos ? waiting_.size() - taken_ : end + 1 - taken_;
        if (length > longest) co_return failFrom(StreamTooLong{});
        if (end == std::string::npos) {
            searched = length;
            CO_CHECK(co_await readMore());
            continue;
        }
        auto line = take(length);
        line.pop_back();
        if (line.ends_with('\r')) line.pop_back();
        co_return line;
    }
}

Task<Result<std::string>> TlsLines::bytes(std::size_t most) {
    if (failure_) co_return fail(*failure_);
    if (waiting_.size() == taken_) CO_CHECK(co_await readMore());
    co_return take(std::min(most, waiting_.size() - taken_));
}

Task<Result<void>> TlsLines::readMore() {
    auto more = co_await connection_->receive();
    if (!more) co_return failFrom(std::move(more).error());
    if (more->empty()) co_return failFrom(StreamEnded{});
    waiting_.erase(0, std::exchange(taken_, 0));
    waiting_ += *more;
    co_return Result<void>{};
}

std::unexpected<Error> TlsLines::failFrom(Error error) {
    std::string().swap(waiting_);
    taken_ = 0;
    failure_ = std::move(error);
    return fail(*failure_);
}

std::string TlsLines::take(std::size_t count) {
    auto bytes = waiting_.substr(taken_, count);
    taken_ += count;
    return bytes;
}

} // namespace morvex
