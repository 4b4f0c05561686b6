#include "platform/linux/SpawnedChild.h"

#include "shared/base/Require.h"
#include "shared/base/SystemError.h"
#include "shared/base/Try.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <poll.h>
#include <span>
#include <sys/eventfd.h>
#include <sys/ioctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace morvex {

namespace {

/// Reported when the system does not know how the child ended.
constexpr std::int32_t unknownStatus = -1;

int numberOf(ChildSignal signal) {
    return signal == ChildSignal::kill ? SIGKILL : SIGTERM;
}

/// WNOWAIT leaves the child to be reaped later.
std::int32_t waitFor(pid_t pid, int options) {
    siginfo_t info{};
    int code = 0;
    do code = ::waitid(P_PID, static_cast<id_t>(pid), &info, WEXITED | options);
    while (code != 0 && errno == EINTR);
    return code == 0 ? info.si_status : unknownStatus;
}

} // namespace

Result<std::unique_ptr<ChildProcess>> SpawnedChild::create(pid_t pid, FileDescriptor output,
                                                           FileDescriptor errors, ChildListener& listener,
                                                           OrphanWatch* watch) {
    std::unique_ptr<SpawnedChild> child(
        new SpawnedChild(pid, std::move(output), std::move(errors), listener, watch));
    CHECK(child->start());
    return child;
}

SpawnedChild::~SpawnedChild() {
    if (!exited_) signalAll(ChildSignal::kill);
    if (thread_.joinable()) {
        abandonOutput();
        thread_.join();
    }
    if (watch_) watch_->ended(pid_);
    waitFor(pid_, 0);
}

void SpawnedChild::signalGroup(ChildSignal signal) {
    ::kill(-pid_, numberOf(signal));
}

void SpawnedChild::signalAll(ChildSignal signal) {
    std::lock_guard lock(descendantsLock_);
    descendants_.signal(numberOf(signal));
}

void SpawnedChild::abandonOutput() {
    ::eventfd_write(abandoned_.get(), 1);
}

Result<void> SpawnedChild::start() {
    if (watch_) watch_->begun(pid_);
    // glibc 2.36 declares pidfd_open for C only, so use the system call.
    exit_ = FileDescriptor(static_cast<int>(::syscall(SYS_pidfd_open, pid_, 0)));
    if (!exit_) return fail(SystemError{errno});
    abandoned_ = FileDescriptor(::eventfd(0, EFD_CLOEXEC));
    if (!abandoned_) return fail(SystemError{errno});
    try {
        thread_ = std::thread([this] { follow(); });
    } catch (const std::system_error& error) {
        return fail(SystemError{error.code().value()});
    }
    return {};
}

void SpawnedChild::follow() {
    std::array<pollfd, 4> watched{{{output_.get(), POLLIN, 0},
                                   {errors_.get(), POLLIN, 0},
                                   {exit_.get(), POLLIN, 0},
                                   {abandoned_.get(), POLLIN, 0}}};
    auto& [output, errors, exit, abandoned] = watched;
    // poll ignores negative descriptors.
    auto isOpen = [](const pollfd& entry) { return entry.fd >= 0; };
    while (std::ranges::any_of(std::span(watched).first(3), isOpen)) {
        int ready = ::poll(watched.data(), watched.size(), -1);
        if (ready < 0 && errno == EINTR) continue;
        require(ready > 0, "a child cannot be watched");
        if (abandoned.revents != 0) {
            if (isOpen(output)) readWhatIsThere(output_, &ChildListener::output);
            if (isOpen(errors)) readWhatIsThere(errors_, &ChildListener::errors);
            break;
        }
        if (output.revents != 0 && !readFrom(output_, &ChildListener::output)) output.fd = -1;
        if (errors.revents != 0 && !readFrom(errors_, &ChildListener::errors)) errors.fd = -1;
        if (exit.revents != 0) {
            noteExit();
            exit.fd = -1;
        }
    }
    listener_.ended();
}

bool SpawnedChild::readFrom(const FileDescriptor& pipe, Tell tell) {
    auto got = ::read(pipe.get(), buffer_.data(), buffer_.size());
    if (got > 0) (listener_.*tell)({buffer_.data(), static_cast<std::size_t>(got)});
    return got > 0 || (got < 0 && errno == EINTR);
}

void SpawnedChild::readWhatIsThere(const FileDescriptor& pipe, Tell tell) {
    int there = 0;
    // A process that still holds the other end may write forever, so only what is there now is read.
    if (::ioctl(pipe.get(), FIONREAD, &there) != 0) return;
    while (there > 0) {
        const auto part = std::min(static_cast<std::size_t>(there), buffer_.size());
        const auto got = ::read(pipe.get(), buffer_.data(), part);
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) return;
        (listener_.*tell)({buffer_.data(), static_cast<std::size_t>(got)});
        there -= static_cast<int>(got);
    }
}

void SpawnedChild::noteExit() {
    auto status = waitFor(pid_, WNOWAIT);
    exited_ = true;
    listener_.exited(status);
}

} // namespace morvex
