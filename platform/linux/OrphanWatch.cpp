#include "platform/linux/OrphanWatch.h"

#include "platform/linux/Descendants.h"
#include "shared/base/SystemError.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <set>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace morvex {

namespace {

/// Detaches the watch process: it holds no terminal, folder or file of the program and ignores signals meant
/// for it. Returns the socket end on which it listens.
int separate(int socket) {
    ::setsid();
    ::signal(SIGTERM, SIG_IGN);
    ::signal(SIGHUP, SIG_IGN);
    // A name of its own, so that commands which end the program by name do not find it.
    ::prctl(PR_SET_NAME, "orphan-watch");
    ::dup2(socket, STDIN_FILENO);
    const int nowhere = ::open("/dev/null", O_RDWR);
    ::dup2(nowhere, STDOUT_FILENO);
    ::dup2(nowhere, STDERR_FILENO);
    ::close_range(STDERR_FILENO + 1, ~0U, 0);
    std::error_code ignored;
    std::filesystem::current_path("/", ignored);
    return STDIN_FILENO;
}

/// A positive number begins a watch; the negative of it ends the watch.
std::set<pid_t> leadersAtTheEndOf(int socket) {
    std::set<pid_t> leaders;
    pid_t number = 0;
    for (;;) {
        auto got = ::recv(socket, &number, sizeof number, 0);
        if (got < 0 && errno == EINTR) continue;
        if (got != sizeof number) return leaders;
        if (number > 0) leaders.insert(number);
        if (number < 0) leaders.erase(-number);
    }
}

} // namespace

Result<OrphanWatch> OrphanWatch::create() {
    std::array<int, 2> ends{};
    if (::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends.data()) != 0)
        return fail(SystemError{errno});
    FileDescriptor heard(ends[0]);
    FileDescriptor told(ends[1]);
    const auto watcher = ::fork();
    if (watcher < 0) return fail(SystemError{errno});
    if (watcher == 0) {
        // Kill at once: nothing controls these programs any more, and a new start may use the same folder.
        for (auto leader : leadersAtTheEndOf(separate(heard.get()))) Descendants(leader).signal(SIGKILL);
        ::_exit(0);
    }
    return OrphanWatch(std::move(told), watcher);
}

OrphanWatch::OrphanWatch(OrphanWatch&& other) noexcept
    : told_(std::move(other.told_)), watcher_(std::exchange(other.watcher_, 0)) {}

OrphanWatch::~OrphanWatch() {
    if (watcher_ == 0) return;
    ::close(told_.release());
    while (::waitpid(watcher_, nullptr, 0) < 0 && errno == EINTR) {
    }
}

void OrphanWatch::begun(pid_t leader) {
    tell(leader);
}

void OrphanWatch::ended(pid_t leader) {
    tell(-leader);
}

void OrphanWatch::tell(pid_t number) {
    // Errors are ignored: if somebody has ended the watch process, this program goes on without it.
    while (::send(told_.get(), &number, sizeof number, MSG_NOSIGNAL) < 0 && errno == EINTR) {
    }
}

} // namespace morvex
