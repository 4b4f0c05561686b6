#include "tests/soak/SoakRun.h"

#include "bench/Measure.h"
#include "shared/base/Require.h"

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <malloc.h>

namespace morvex {

namespace {

using Microseconds = std::chrono::duration<double, std::micro>;

constexpr std::size_t mostSamples = 100;
constexpr double mebibyte = 1024.0 * 1024.0;
/// Between two cuts: long enough for a ping to be sent and answered.
constexpr std::chrono::seconds leap{26};
/// Of so many status calls one is measured, with an echo behind it.
constexpr std::size_t callsOfEcho = 4;
/// After so many cycles the relay ends.
constexpr std::size_t cyclesOfRelay = 50;
constexpr std::size_t largestFile = 256 * 1024;

double processorMicroseconds() {
    timespec used{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &used);
    return static_cast<double>(used.tv_sec) * 1e6 + static_cast<double>(used.tv_nsec) / 1e3;
}

double heapMebibytes() {
    const auto heap = ::mallinfo2();
    return static_cast<double>(heap.uordblks + heap.hblkhd) / mebibyte;
}

double openDescriptors() {
    const std::filesystem::directory_iterator all("/proc/self/fd");
    return static_cast<double>(std::distance(begin(all), end(all)));
}

void print(const Sample& now) {
    std::printf("%8zu envelopes: call %.0f µs, echo %.0f µs, processor %.0f µs, heap %.2f MiB, resident %.1f "
                "MiB, %.0f descriptors\n",
                now.envelopes, now.latency, now.echo, now.processor, now.heap, now.resident, now.descriptors);
    std::fflush(stdout);
}

} // namespace

const std::vector<Sample>& SoakRun::run() {
    const auto cycles = std::max<std::size_t>(1, plan_.reconnects);
    const auto callsInCycle = std::max<std::size_t>(1, plan_.envelopes / 2 / cycles);
    const auto cyclesInSample = std::max<std::size_t>(1, cycles / mostSamples);
    prepare();
    processorThen_ = processorMicroseconds();
    for (std::size_t cycle = 1; cycle <= cycles; ++cycle) {
        callSome(callsInCycle);
        if (cycle % cyclesInSample == 0) takeSample();
        reconnect(cycle);
    }
    return samples_;
}

void SoakRun::prepare() {
    const auto folder = pair_.home() / "Projekty";
    std::filesystem::create_directory(folder);
    std::ofstream(folder / "velky.txt") << std::string(largestFile, 'x');
    pair_.allow(folder);
    call("mac.notes.create", R"({"title":"Nákup","body":"mléko"})");
    plain_.emplace(MacPayload{MacPayload::ToolCall{"mac.status", "{}"}},
                   MacPayload{call("mac.status", "{}")});
}

void SoakRun::callSome(std::size_t calls) {
    call("mac.files.read", R"({"path":"velky.txt"})");
    call("mac.notes.update", R"({"title":"Nákup","body":"mléko )" + std::to_string(envelopes_) + "\"}");
    call("mac.notes.search", R"({"query":"mléko"})");
    for (std::size_t number = 3; number < calls; ++number)
        if (number % callsOfEcho == 0)
            measure();
        else
            call("mac.status", "{}");
}

MacPayload::ToolResult SoakRun::call(const char* tool, const std::string& argumentsJSON) {
    auto result = pair_.phone().call(tool, argumentsJSON);
    if (!result || !result->ok) ++lostCalls_;
    envelopes_ += 2;
    ++callsOfSample_;
    return std::move(result).value_or(MacPayload::ToolResult{});
}

void SoakRun::measure() {
    call("mac.status", "{}");
    latencies_.push_back(Microseconds(pair_.phone().lastCall()).count());
    const auto start = std::chrono::steady_clock::now();
    plain_->once();
    echoes_.push_back(Microseconds(std::chrono::steady_clock::now() - start).count());
}

void SoakRun::reconnect(std::size_t number) {
    pair_.pass(leap);
    passed_ += leap;
    if (number % cyclesOfRelay == 0) {
        pair_.restartRelay();
        ++relayRestarts_;
    } else if (number % 2 == 0) {
        pair_.cutPhone();
    } else {
        pair_.cutMac();
    }
    const auto waited = pair_.connect();
    require(waited.has_value(), "the pair does not connect again");
    passed_ += *waited;
}

void SoakRun::takeSample() {
    const auto processor = processorMicroseconds();
    const auto latency = median(latencies_);
    const auto echo = median(echoes_);
    samples_.push_back({.envelopes = envelopes_,
                        .latency = latency,
                        .echo = echo,
                        .ratio = latency / echo,
                        .processor = (processor - processorThen_) / static_cast<double>(callsOfSample_),
                        .heap = heapMebibytes(),
                        .resident = residentMebibytes(),
                        .descriptors = openDescriptors()});
    processorThen_ = processor;
    echoesOfSample_ = echoes_.size();
    callsOfSample_ = 0;
    latencies_.clear();
    echoes_.clear();
    if (samples_.size() % 10 == 0) print(samples_.back());
}

} // namespace morvex
