#include "platform/posix/base/LogQueue.h"

#include "platform/posix/base/QuietThread.h"

#include <cerrno>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <poll.h>
#include <string_view>
#include <thread>
#include <unistd.h>
#include <utility>

namespace morvex {

namespace {

constexpr std::chrono::milliseconds patience{500};
constexpr int pollMilliseconds = 50;

} // namespace

struct LogQueue::Shared {
    Shared(int given, Style chosen) : descriptor(given), style(std::move(chosen)) {}

    /// The thread, until the queue ends.
    void run();
    void put(const std::string& line, std::size_t lostBefore);
    bool writeAll(std::string_view text);
    bool waitUntilWritable();
    bool isEnding();

    const int descriptor;
    const Style style;
    bool isMidLine = false; ///< a line was begun and could not be finished

    std::mutex mutex;
    std::condition_variable hasNews;
    std::condition_variable isDrained;
    std::deque<std::string> lines;
    std::size_t bytes = 0; ///< of them
    std::size_t lost = 0;  ///< lines that nobody has been told of
    bool isBusy = false;
    bool ends = false;
};

LogQueue::LogQueue(int descriptor, Style style)
    : shared_(std::make_shared<Shared>(descriptor, std::move(style))) {
    startQuietThread([shared = shared_] { shared->run(); }).detach();
}

LogQueue::~LogQueue() {
    drain(patience);
    const std::lock_guard lock{shared_->mutex};
    shared_->ends = true;
    shared_->hasNews.notify_one();
}

void LogQueue::write(std::string line) {
    if (line.size() > shared_->style.longest) line.resize(shared_->style.longest);
    const std::lock_guard lock{shared_->mutex};
    if (shared_->lines.size() == maxLines || shared_->bytes + line.size() > maxBytes) {
        ++shared_->lost;
        return;
    }
    shared_->bytes += line.size();
    shared_->lines.push_back(std::move(line));
    shared_->hasNews.notify_one();
}

bool LogQueue::drain(std::chrono::milliseconds time) {
    std::unique_lock lock{shared_->mutex};
    return shared_->isDrained.wait_for(lock, time,
                                       [&] { return shared_->lines.empty() && !shared_->isBusy; });
}

void LogQueue::Shared::run() {
    std::unique_lock lock{mutex};
    for (;;) {
        isBusy = false;
        if (lines.empty()) isDrained.notify_all();
        hasNews.wait(lock, [&] { return ends || !lines.empty(); });
        if (ends) return;
        isBusy = true;
        const auto line = std::move(lines.front());
        lines.pop_front();
        bytes -= line.size();
        const auto lostBefore = std::exchange(lost, 0);
        lock.unlock();
        put(line, lostBefore);
        lock.lock();
    }
}

void LogQueue::Shared::put(const std::string& line, std::size_t lostBefore) {
    const auto notice = lostBefore == 0 ? "" : std::to_string(lostBefore) + style.lost + '\n';
    const bool isToldOfLost = notice.empty() || writeAll(notice);
    const bool isWritten = isToldOfLost && writeAll(line + '\n');
    const std::lock_guard lock{mutex};
    if (!isToldOfLost) lost += lostBefore;
    if (!isWritten) ++lost;
}

bool LogQueue::Shared::writeAll(std::string_view text) {
    const auto whole = (isMidLine ? "\n" : "") + std::string{text};
    for (std::string_view rest = whole; !rest.empty();) {
        if (!waitUntilWritable()) return false;
        const auto count = ::write(descriptor, rest.data(), rest.size());
        if (count < 0 && (errno == EINTR || errno == EAGAIN)) continue;
        if (count < 0) return false;
        rest.remove_prefix(static_cast<std::size_t>(count));
        isMidLine = !rest.empty();
    }
    return true;
}

bool LogQueue::Shared::waitUntilWritable() {
    // A pipe is writable when a line fits, so that the write itself waits for nobody.
    while (!isEnding()) {
        pollfd waited{descriptor, POLLOUT, 0};
        if (::poll(&waited, 1, pollMilliseconds) > 0) return true;
    }
    return false;
}

bool LogQueue::Shared::isEnding() {
    const std::lock_guard lock{mutex};
    return ends;
}

} // namespace morvex
