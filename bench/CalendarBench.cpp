#include "bench/Measure.h"
#include "foundation/ThreadExecutor.h"
#include "platform/linux/evolution/EvolutionCalendarStore.h"
#include "platform/memory/FixedLocalTime.h"
#include "tests/support/Await.h"
#include "tests/support/EnvironmentValue.h"
#include "tests/support/PrivateDesktop.h"

#include <chrono>
#include <cstdio>
#include <sstream>
#include <string>
#include <vector>

// Measures the events of one week among 20,000 in ten calendars, with the real services of the desktop; the
// baseline is a small C program on the same library. Then the first look at the start of the program, with
// the services and without them, and the memory that the library takes.

namespace morvex {
namespace {

constexpr int calendars = 10;
constexpr int eventsOfEach = 2000;
constexpr int rounds = 7;

std::string idOf(int calendar) {
    return "c" + std::to_string(calendar);
}

/// Single events, eight a day in all calendars together, and every hundredth a weekly series.
void fill(const PrivateDesktop& desktop, int calendar) {
    const auto folder = desktop.home() / "data" / "evolution" / "calendar" / idOf(calendar);
    std::filesystem::create_directories(folder);
    std::ofstream file(folder / "calendar.ics");
    file << "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:bench\r\n";
    for (int each = 0; each < eventsOfEach; ++each) {
        const auto number = each * calendars + calendar;
        const std::chrono::sys_days first = std::chrono::year(2022) / 1 / 1;
        const std::chrono::year_month_day day = first + std::chrono::days(number / 8);
        char start[32];
        std::snprintf(start, sizeof start, "%04d%02u%02uT%02d", int{day.year()}, unsigned{day.month()},
                      unsigned{day.day()}, 8 + number % 8);
        file << "BEGIN:VEVENT\r\nUID:" << number << "@bench\r\nSUMMARY:Schůzka " << number
             << "\r\nDTSTAMP:20220101T000000Z"
             << "\r\nDTSTART:" << start << "0000Z\r\nDTEND:" << start << "3000Z\r\nLOCATION:Místnost\r\n";
        if (each % 100 == 0) file << "RRULE:FREQ=WEEKLY;COUNT=20\r\n";
        file << "END:VEVENT\r\n";
    }
    file << "END:VCALENDAR\r\n";
}

Date at(const char* text) {
    return parseWireDate(text).value();
}

struct Baseline {
    Cost cost{};
    int found = 0;
};

Baseline baseline(const char* mode) {
    ChildProgram program(
        {MORVEX_CALENDAR_BASELINE, std::to_string(rounds), "20260309T000000Z", "20260316T000000Z", mode}, {});
    std::vector<double> walls;
    std::vector<double> processors;
    for (int round = 0; round < rounds; ++round) {
        double wall = 0;
        double processor = 0;
        std::istringstream(program.readLine()) >> wall >> processor;
        walls.push_back(wall);
        processors.push_back(processor);
    }
    const auto found = std::stoi(program.readLine());
    return {{median(walls), median(processors)}, found};
}

void measureWeek(ThreadExecutor& main, EvolutionService& service) {
    EvolutionCalendarStore store(service);
    std::vector<std::string> ids;
    for (int each = 0; each < calendars; ++each) ids.push_back(idOf(each));
    std::size_t found = 0;
    const auto week = [&] {
        auto events =
            await(main, store.events(at("2026-03-09T00:00:00Z"), at("2026-03-16T00:00:00Z"), ids, 2000, {}));
        require(events.has_value(), "a week was not read");
        found = events->size();
    };
    week(); // the service reads a calendar that it does not know yet
    const auto ours = costs(rounds, {week}).front();
    std::printf(
        "one week of 20,000 events in ten calendars: %.1f ms and %.1f ms of processor time for %zu events\n",
        ours.wall, ours.processor, found);
    for (const char* mode : {"range", "series"}) {
        const auto theirs = baseline(mode);
        std::printf(
            "  the C program by %s: %.1f and %.1f ms for %d events; ours took %.2f and %.2f times that\n",
            mode, theirs.cost.wall, theirs.cost.processor, theirs.found, ours.wall / theirs.cost.wall,
            ours.processor / theirs.cost.processor);
    }
}

/// What the program waits for at its start.
double firstLook(ThreadExecutor& main, bool isReachable) {
    FixedLocalTime localTime;
    EvolutionService service(main, localTime);
    EvolutionCalendarStore store(service);
    return milliseconds([&] {
        const bool isReached = await(main, store.requestAccess({})).has_value();
        require(isReached == isReachable, "the registry is not as it should be");
        if (isReached) require(await(main, store.calendars({})).has_value(), "no calendars");
    });
}

void bench() {
    ThreadExecutor main("main");
    FixedLocalTime localTime;
    {
        const EnvironmentValue noBus("DBUS_SESSION_BUS_ADDRESS", "");
        std::printf("first look without a session bus: %.1f ms\n", firstLook(main, false));
    }
    const auto before = residentMebibytes();
    PrivateDesktop desktop;
    for (int each = 0; each < calendars; ++each) {
        desktop.addSource(idOf(each), "Kalendář " + std::to_string(each), "Calendar");
        fill(desktop, each);
    }
    std::printf("first look that starts the services, with 12 calendars: %.0f ms\n", firstLook(main, true));
    std::printf("first look when they run: %.0f ms\n", firstLook(main, true));
    EvolutionService service(main, localTime);
    measureWeek(main, service);
    std::printf("memory of this process: %.1f MiB, %.1f MiB before the first look\n", residentMebibytes(),
                before);
}

} // namespace
} // namespace morvex

int main() {
    morvex::bench();
}
