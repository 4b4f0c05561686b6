#include "platform/linux/BoottimeClock.h"

#include "shared/base/Require.h"
#include "shared/base/SystemError.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <ctime>
#include <poll.h>
#include <pthread.h>
#include <sys/eventfd.h>
#include <sys/timerfd.h>
#include <unistd.h>

namespace morvex {

Result<std::unique_ptr<BoottimeClock>> BoottimeClock::create() {
    FileDescriptor timer(::timerfd_create(CLOCK_BOOTTIME, TFD_CLOEXEC | TFD_NONBLOCK));
    if (!timer) return fail(SystemError{errno});
    FileDescriptor end(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK));
    if (!end) return fail(SystemError{errno});
    std::unique_ptr<BoottimeClock> clock(new BoottimeClock(std::move(timer), std::move(end)));
    clock->thread_ = std::thread([raw = clock.get()] { raw->run(); });
    return clock;
}

BoottimeClock::BoottimeClock(FileDescriptor timer, FileDescriptor end)
    : timer_(std::move(timer)), end_(std::move(end)) {}

BoottimeClock::~BoottimeClock() {
    require(::eventfd_write(end_.get(), 1) == 0, "the clock's thread cannot be told to end");
    thread_.join();
}

Date BoottimeClock::now() const {
    return std::chrono::floor<Date::duration>(std::chrono::system_clock::now());
}

Clock::Duration BoottimeClock::sinceBoot() const {
    timespec time{};
    require(::clock_gettime(CLOCK_BOOTTIME, &time) == 0, "the system has no clock that counts suspend");
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

Clock::TimerId BoottimeClock::at(Duration when, Job callback) {
    std::lock_guard lock(mutex_);
    auto id = ++lastId_;
    auto added = waiting_.emplace(Key(when, id), std::move(callback)).first;
    if (added == waiting_.begin()) wakeAt(when);
    return id;
}

void BoottimeClock::forget(TimerId timer) {
    // The callback is destroyed outside the lock, since what it holds may use the clock.
    std::map<Key, Job>::node_type dropped;
    std::lock_guard lock(mutex_);
    auto found = std::ranges::find(waiting_, timer, [](const auto& entry) { return entry.first.second; });
    if (found != waiting_.end()) dropped = waiting_.extract(found);
}

void BoottimeClock::run() {
    ::pthread_setname_np(::pthread_self(), "clock");
    std::array<pollfd, 2> events{{{timer_.get(), POLLIN, 0}, {end_.get(), POLLIN, 0}}};
    for (;;) {
        int ready = ::poll(events.data(), events.size(), -1);
        require(ready >= 0 || errno == EINTR, "the clock's thread cannot wait");
        if (ready <= 0) continue;
        if (events[1].revents != 0) return;
        if (auto callback = takeDue()) (*callback)();
    }
}

/// Returns the first callback if its time has come, and sets the timer for the next one. If the next one is
/// due as well, the timer fires at once, so that a shutdown is noticed between any two callbacks.
std::optional<Job> BoottimeClock::takeDue() {
    std::lock_guard lock(mutex_);
    std::uint64_t expirations = 0;
    [[maybe_unused]] auto drained = ::read(timer_.get(), &expirations, sizeof expirations);
    std::optional<Job> due;
    if (!waiting_.empty() && waiting_.begin()->first.first <= sinceBoot())
        due = std::move(waiting_.extract(waiting_.begin()).mapped());
    if (!waiting_.empty()) wakeAt(waiting_.begin()->first.first);
    return due;
}

void BoottimeClock::wakeAt(Duration when) {
    // An all-zero time would disarm the timer; any past time fires at once.
    auto positive = std::max(when, Duration(1));
    auto seconds = std::chrono::floor<std::chrono::seconds>(positive);
    itimerspec time{};
    time.it_value.tv_sec = seconds.count();
    time.it_value.tv_nsec = (positive - seconds).count();
    require(::timerfd_settime(timer_.get(), TFD_TIMER_ABSTIME, &time, nullptr) == 0, "a timer cannot be set");
}

} // namespace morvex
