#pragma once

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <ctime>
#include <fstream>
#include <functional>
#include <pthread.h>
#include <sys/resource.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace morvex {

using Milliseconds = std::chrono::duration<double, std::milli>;

inline double milliseconds(const std::function<void()>& work) {
    auto start = std::chrono::steady_clock::now();
    work();
    return Milliseconds(std::chrono::steady_clock::now() - start).count();
}

/// The median; `figures` must not be empty.
inline double median(std::vector<double> figures) {
    std::ranges::sort(figures);
    return figures[figures.size() / 2];
}

/// Median in milliseconds.
inline double median(int times, const std::function<void()>& work) {
    std::vector<double> all;
    for (int i = 0; i < times; ++i) all.push_back(milliseconds(work));
    return median(std::move(all));
}

/// Processor time of this process and of its ended children.
inline double processorMilliseconds() {
    timespec own{};
    rusage children{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &own);
    ::getrusage(RUSAGE_CHILDREN, &children);
    const auto of = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) / 1e3;
    };
    return static_cast<double>(own.tv_sec) * 1e3 + static_cast<double>(own.tv_nsec) / 1e6 +
           of(children.ru_utime) + of(children.ru_stime);
}

inline double threadProcessorMilliseconds(std::thread& thread) {
    clockid_t clock{};
    timespec used{};
    ::pthread_getcpuclockid(thread.native_handle(), &clock);
    ::clock_gettime(clock, &used);
    return static_cast<double>(used.tv_sec) * 1e3 + static_cast<double>(used.tv_nsec) / 1e6;
}

/// Memory of this process.
inline double residentMebibytes() {
    std::size_t all = 0;
    std::size_t resident = 0;
    std::ifstream("/proc/self/statm") >> all >> resident;
    return static_cast<double>(resident) * static_cast<double>(::sysconf(_SC_PAGESIZE)) / (1024 * 1024);
}

/// Medians in milliseconds.
struct Cost {
    double wall;
    double processor; ///< of all threads and children; more reliable than `wall` on a busy computer
};

/// The works take turns, so that other load on the computer slows all of them.
inline std::vector<Cost> costs(int times, const std::vector<std::function<void()>>& works) {
    std::vector<std::vector<double>> walls(works.size());
    std::vector<std::vector<double>> processors(works.size());
    for (int i = 0; i < times; ++i)
        for (std::size_t work = 0; work < works.size(); ++work) {
            auto before = processorMilliseconds();
            walls[work].push_back(milliseconds(works[work]));
            processors[work].push_back(processorMilliseconds() - before);
        }
    std::vector<Cost> all;
    for (std::size_t work = 0; work < works.size(); ++work)
        all.push_back({median(walls[work]), median(processors[work])});
    return all;
}

} // namespace morvex
