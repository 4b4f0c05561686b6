#include "tests/soak/Picture.h"
#include "tests/soak/SoakRun.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

// soak ENVELOPES RECONNECTIONS [PICTURE]: prints how the process stands along the way and ends with 1 when a
// call was lost or heap or descriptors have grown since the second tenth of the run.

namespace morvex {
namespace {

/// What allocators and queues may differ by between two moments of the same run.
constexpr double allowedHeapGrowth = 0.5;
constexpr double allowedDescriptorGrowth = 2;

/// After warm-up, and at the end.
struct Change {
    double before;
    double after;

    Change(const std::vector<Sample>& samples, double Sample::* figure)
        : before(middleOfTenth(samples, 2, figure)), after(middleOfTenth(samples, 10, figure)) {}
};

bool isFlat(const char* name, Change change, double allowed) {
    const bool isGrown = change.after - change.before > allowed;
    std::printf("CASES  soak, %s: %.2f after warm-up, %.2f at the end, %s\n", name, change.before,
                change.after, isGrown ? "GROWN" : "flat");
    return !isGrown;
}

void tell(const char* name, Change change) {
    std::printf("CASES  soak, %s: %.1f after warm-up, %.1f at the end (%+.1f %%)\n", name, change.before,
                change.after, (change.after / change.before - 1) * 100);
}

int soak(SoakRun::Plan plan, const char* picture) {
    SoakRun run(plan);
    const auto& samples = run.run();
    const auto hours = std::chrono::duration<double, std::ratio<3600>>(run.passed()).count();
    const auto title = std::to_string(samples.back().envelopes) + " envelopes, " +
                       std::to_string(plan.reconnects) + " reconnections";
    std::printf("CASES  soak: %s in %.1f hours of moved time, %zu calls lost\n", title.c_str(), hours,
                run.lostCalls());
    const bool isHeapFlat = isFlat("heap in MiB", {samples, &Sample::heap}, allowedHeapGrowth);
    const bool areDescriptorsFlat =
        isFlat("descriptors", {samples, &Sample::descriptors}, allowedDescriptorGrowth);
    tell("resident memory in MiB", {samples, &Sample::resident});
    tell("latency of a call in µs", {samples, &Sample::latency});
    tell("processor time of a call in µs", {samples, &Sample::processor});
    if (picture) std::ofstream(picture) << pictureOf(samples, title);
    return isHeapFlat && areDescriptorsFlat && run.lostCalls() == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
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
