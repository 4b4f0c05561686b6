#pragma once

#include <csignal>
#include <pthread.h>
#include <thread>
#include <utility>

namespace morvex {

/// A thread that takes no signal: those of the process are for the thread that decides when they end it. The
/// mask is set before the thread begins, since a new thread inherits it.
template <class Work> std::thread startQuietThread(Work work) {
    sigset_t all;
    sigset_t before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    std::thread thread(std::move(work));
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    return thread;
}

} // namespace morvex
