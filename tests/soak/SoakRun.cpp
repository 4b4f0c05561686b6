#include "tests/soak/SoakRun.h"

#include "shared/base/Require.h"

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <malloc.h>
#include <unistd.h>

namespace morvex {

namespace {

using Microseconds = std::chrono::duration<double, std::micro>;

constexpr std::size_t mostSamples = 100;
constexpr double mebibyte = 1024.0 * 1024.0;
/// Between two cuts: long enough for a ping to be sent and answered.
constexpr std::chrono::seconds leap{26};

double processorMicroseconds() {
    timespec used{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &used);
    return static_cast<double>(used.tv_sec) * 1e6 + static_cast<double>(used.tv_nsec) / 1e3;
}

double heapMebibytes() {
    const auto heap = ::mallinfo2();
    return static_cast<double>(heap.uordblks + heap.hblkhd) / mebibyte;
}

double residentMebibytes() {
    std::size_t all = 0;
    std::size_t resident = 0;
    std::ifstream("/proc/self/statm") >> all >> resident;
    return static_cast<double>(resident) * static_cast<double>(::sysconf(_SC_PAGESIZE)) / mebibyte;
}

double openDescriptors() {
    const std::filesystem::directory_iterator all("/proc/self/fd");
    return static_cast<double>(std::distance(begin(all), end(all)));
}

} // namespace

const std::vector<Sample>& SoakRun::run() {
    const auto cycles = std::max<std::size_t>(1, plan_.reconnects);
    const auto callsInCycle = std::max<std::size_t>(1, plan_.envelopes / 2 / cycles);
    const auto cyclesInSample = std::max<std::size_t>(1, cycles / mostSamples);
    processorThen_ = processorMicroseconds();
    for (std::size_t cycle = 1; cycle <= cycles; ++cycle) {
        callSome(callsInCycle);
        if (cycle % cyclesInSample == 0) takeSample();
        reconnect(cycle);
    }
    return samples_;
}

void SoakRun::callSome(std::size_t calls) {
    for (std::size_t call = 0; call < calls; ++call) {
        const auto start = std::chrono::steady_clock::now();
        const auto result = pair_.phone().call("mac.status", "{}");
        latencies_.push_back(Microseconds(std::chrono::steady_clock::now() - start).count());
        if (!result || !result->ok) ++lostCalls_;
        envelopes_ += 2;
    }
}

void SoakRun::reconnect(std::size_t number) {
    pair_.pass(leap);
    passed_ += leap;
    if (number % 2 == 0)
        pair_.cutPhone();
    else
        pair_.cutMac();
    const auto waited = pair_.connect();
    vyzaduj(waited.has_value(), "the pair does not connect again");
    passed_ += *waited;
}

void SoakRun::takeSample() {
    std::ranges::sort(latencies_);
    const auto processor = processorMicroseconds();
    samples_.push_back({.envelopes = envelopes_,
                        .latency = latencies_.at(latencies_.size() / 2),
                        .processor = (processor - processorThen_) / static_cast<double>(latencies_.size()),
                        .heap = heapMebibytes(),
                        .resident = residentMebibytes(),
                        .descriptors = openDescriptors()});
    processorThen_ = processor;
    latencies_.clear();
    if (samples_.size() % 10 != 0) return;
    const auto& now = samples_.back();
    std::printf("%8zu envelopes: call %.0f µs, processor %.0f µs, heap %.2f MiB, resident %.1f MiB, %.0f "
                "descriptors\n",
                now.envelopes, now.latency, now.processor, now.heap, now.resident, now.descriptors);
    std::fflush(stdout);
}

} // namespace morvex
