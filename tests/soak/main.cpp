#include "tests/soak/Picture.h"
#include "tests/soak/SoakRun.h"
#include "tests/support/Sanitized.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

// soak ENVELOPES RECONNECTIONS [PICTURE]: prints how the process stands along the way and ends with 1 when a
// call was lost, memory or descriptors grow, or calls end slower beside plain echoes than they began.

namespace morvex {
namespace {

/// Bytes an envelope, after warm-up: less than anything that is kept of each. A short run cannot tell so
/// little from what allocators and queues differ by between two moments.
constexpr double allowedSlope = 0.25;
constexpr double allowedSlopeOfShortRun = 16;
/// MiB, of which a slope says nothing when they come all at once.
constexpr double allowedStep = 4;
constexpr double allowedDescriptorGrowth = 2;
constexpr double allowedLatencyGrowth = 0.10;
/// Of a sample; with fewer the middle of them says nothing about a tenth.
constexpr std::size_t fewestEchoes = 500;

constexpr double mebibyte = 1024.0 * 1024.0;

/// After warm-up, and at the end.
struct Change {
    double before;
    double after;

    [[nodiscard]] double share() const { return after / before - 1; }
};

Change changeOf(const std::vector<Sample>& samples, double Sample::* figure) {
    return {middleOfTwoTenths(samples, 2, figure), middleOfTwoTenths(samples, 9, figure)};
}

bool isHeapFlat(const std::vector<Sample>& samples, bool isShort) {
    const auto change = changeOf(samples, &Sample::heap);
    const auto slope = slopeAfterWarmUp(samples, &Sample::heap) * mebibyte;
    const auto allowed = isShort ? allowedSlopeOfShortRun : allowedSlope;
    const bool isFlat = slope <= allowed && change.after - change.before <= allowedStep;
    std::printf("CASES  soak, heap: %.2f MiB after warm-up, %.2f at the end, %+.2f bytes an envelope, %s\n",
                change.before, change.after, slope, isFlat ? "flat" : "GROWS");
    return isFlat;
}

/// `name` with its unit.
bool isFlat(const char* name, Change change, double allowedGrowth) {
    const bool isFlat = change.after - change.before <= allowedGrowth;
    std::printf("CASES  soak, %s: %.1f after warm-up, %.1f at the end, %s\n", name, change.before,
                change.after, isFlat ? "flat" : "GROWN");
    return isFlat;
}

void tell(const char* name, Change change) {
    std::printf("CASES  soak, %s: %.1f after warm-up, %.1f at the end (%+.1f %%)\n", name, change.before,
                change.after, change.share() * 100);
}

bool isResidentFlat(const std::vector<Sample>& samples) {
    const char* name = "resident memory in MiB";
    const auto change = changeOf(samples, &Sample::resident);
    if (!isSanitized) return isFlat(name, change, allowedStep);
    tell(name, change);
    return true;
}

bool isLatencyFlat(const std::vector<Sample>& samples, bool isShort) {
    const auto change = changeOf(samples, &Sample::ratio);
    const bool isFlat = change.share() <= allowedLatencyGrowth;
    const char* verdict = isShort ? "too short to judge" : isFlat ? "flat" : "SLOWER";
    std::printf("CASES  soak, a status call beside a plain echo: %.2f times after warm-up, %.2f at the end "
                "(%+.1f %%), %s\n",
                change.before, change.after, change.share() * 100, verdict);
    return isShort || isFlat;
}

int soak(SoakRun::Plan plan, const char* picture) {
    SoakRun run(plan);
    const auto& samples = run.run();
    const auto hours = std::chrono::duration<double, std::ratio<3600>>(run.passed()).count();
    const auto title = std::to_string(samples.back().envelopes) + " envelopes, " +
                       std::to_string(plan.reconnects) + " reconnections";
    std::printf("CASES  soak: %s, %zu of them by a new relay, in %.1f hours of moved time, %zu calls lost\n",
                title.c_str(), run.relayRestarts(), hours, run.lostCalls());
    const bool isShort = run.echoes() < fewestEchoes;
    const std::array flat{
        isHeapFlat(samples, isShort), isResidentFlat(samples),
        isFlat("descriptors", changeOf(samples, &Sample::descriptors), allowedDescriptorGrowth),
        isLatencyFlat(samples, isShort)};
    tell("latency of a status call in µs", changeOf(samples, &Sample::latency));
    tell("processor time of a call of any kind in µs", changeOf(samples, &Sample::processor));
    if (picture) std::ofstream(picture) << pictureOf(samples, title);
    const bool isGood = std::ranges::find(flat, false) == flat.end() && run.lostCalls() == 0;
    return isGood ? EXIT_SUCCESS : EXIT_FAILURE;
}

} // namespace
} // namespace morvex

int main(int argumentCount, char** arguments) {
    if (argumentCount < 3) {
        std::fprintf(stderr, "Usage: soak ENVELOPES RECONNECTIONS [PICTURE]\n");
        return 2;
    }
    return morvex::soak({std::stoul(arguments[1]), std::stoul(arguments[2])},
                        argumentCount > 3 ? arguments[3] : nullptr);
}
