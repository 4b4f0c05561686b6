#include "platform/posix/base/Process.h"

#include <limits>
#include <sys/resource.h>
#include <unistd.h>

namespace morvex {

bool isTerminal(int descriptor) {
    return ::isatty(descriptor) != 0;
}

void surviveGoneReaders() {
    std::signal(SIGPIPE, SIG_IGN);
}

void hearOfChildren() {
    std::signal(SIGCHLD, SIG_DFL);
}

std::vector<int> heededEndSignals() {
    std::vector<int> heeded;
    for (const int signal : endSignals) {
        struct sigaction action{};
        if (::sigaction(signal, nullptr, &action) == 0 && action.sa_handler != SIG_IGN)
            heeded.push_back(signal);
    }
    return heeded;
}

void blockEndSignals() {
    sigset_t ending;
    ::sigemptyset(&ending);
    for (const int signal : endSignals) ::sigaddset(&ending, signal);
    ::pthread_sigmask(SIG_BLOCK, &ending, nullptr);
}

std::size_t raiseFileLimit() {
    rlimit limit{};
    if (::getrlimit(RLIMIT_NOFILE, &limit) != 0) return std::numeric_limits<std::size_t>::max();
    limit.rlim_cur = limit.rlim_max;
    ::setrlimit(RLIMIT_NOFILE, &limit);
    return limit.rlim_max;
}

} // namespace morvex
