#include "tests/platform/linux/evolution/EvolutionTest.h"
#include "tests/platform/linux/evolution/RealCalDav.h"

#include <algorithm>
#include <atomic>

namespace morvex {
namespace {

/// The calendars of the desktop with one that a server on the Internet has.
class CalDavTest : public EvolutionTest {
  protected:
    static inline const std::string remote = "remote";

    void SetUp() override {
        EvolutionTest::SetUp();
        server.put("first", vevent("first", "DTSTART:20260328T100000Z\r\nDTEND:20260328T110000Z\r\n"));
        server.put("series",
                   vevent("series", "DTSTART;TZID=Europe/Prague:20260327T090000\r\nDTEND;TZID=Europe/"
                                    "Prague:20260327T093000\r\nRRULE:FREQ=DAILY;COUNT=4\r\n"));
        desktop->addCalDav(remote, "Práce", server.port(), RealCalDav::path);
        store.emplace(*service);
    }

    ~CalDavTest() override { store.reset(); }

    std::vector<CalendarEvent> events() {
        auto found =
            run(store->events(at("2026-03-20T00:00:00Z"), at("2026-04-20T00:00:00Z"), {remote}, 100, {}));
        return found.value_or(std::vector<CalendarEvent>());
    }

    /// A calendar is known at once, and what it has once the service has reached the server.
    void waitForEvents() {
        ASSERT_TRUE(eventually([this] { return events().size() == 5; })) << events().size();
        ASSERT_TRUE(eventually([this] { return info().writable; }));
    }

    /// As the desktop does every half hour.
    void lookAtTheServer() {
        const auto looked =
            run(service->run({}, [](EvolutionDesktop& there, const TimeZone&, GCancellable* cancellable) {
                return there.with<void>(SourceKind::events, remote, cancellable,
                                        [&](EClient* client, GLibError& error) -> Result<void> {
                                            e_client_refresh_sync(client, cancellable, error.slot());
                                            return {};
                                        });
            }));
        EXPECT_TRUE(looked.has_value());
    }

    CalendarInfo info() {
        const auto calendars = run(store->calendars({})).value();
        const auto found = std::ranges::find(calendars, remote, &CalendarInfo::id);
        return found == calendars.end() ? CalendarInfo() : *found;
    }

    /// The only object with this text.
    [[nodiscard]] std::string onServer(const std::string& text) const {
        std::vector<std::string> found;
        for (const auto& object : server.objects())
            if (object.contains(text)) found.push_back(object);
        return found.size() == 1 ? found.front() : "";
    }

    RealCalDav server;
    std::optional<EvolutionCalendarStore> store;
};

TEST_F(CalDavTest, ItsEventsAreListed) {
    waitForEvents();
    EXPECT_EQ(info(), (CalendarInfo{remote, "Práce", "CalDAV", true}));
    std::vector<std::string> starts;
    for (const auto& each : events()) starts.push_back(each.title.value_or("") + formatDate(each.start));
    EXPECT_EQ(starts, (std::vector<std::string>{"series2026-03-27T08:00:00Z", "series2026-03-28T08:00:00Z",
                                                "first2026-03-28T10:00:00Z", "series2026-03-29T07:00:00Z",
                                                "series2026-03-30T07:00:00Z"}));
}

TEST_F(CalDavTest, ThatItBecomesWritableIsTold) {
    server.stop();
    EXPECT_FALSE(info().writable) << "nobody has reached its server yet";
    const Changes changes(main, *store);
    server.start();
    lookAtTheServer();
    ASSERT_TRUE(eventually([this] { return events().size() == 5; }));
    EXPECT_TRUE(eventually([&] { return changes.told > 0; }));
    EXPECT_TRUE(info().writable);
}

TEST_F(CalDavTest, WhatIsMadeChangedAndRemovedGoesToTheServer) {
    waitForEvents();
    const auto id = run(store->create(
        {"Schůzka", at("2026-04-01T10:00:00Z"), at("2026-04-01T11:00:00Z"), "Brno", remote}, {}));
    ASSERT_TRUE(id.has_value()) << id.error().popis();
    EXPECT_TRUE(eventually([this] {
        return onServer("SUMMARY:Schůzka").contains("DTSTART;TZID=Europe/Prague:20260401T120000");
    }));
    EXPECT_EQ(events().size(), 6U);
    EXPECT_TRUE(run(store->update(*id, {"Oběd", {}, {}, {}}, {})).value());
    EXPECT_TRUE(eventually([this] { return onServer("LOCATION:Brno").contains("SUMMARY:Oběd"); }));
    EXPECT_TRUE(run(store->remove(*id, {})).value());
    EXPECT_TRUE(eventually([this] { return server.objects().size() == 2; }));
    EXPECT_EQ(events().size(), 5U);
}

TEST_F(CalDavTest, OneOccurrenceIsMovedAndAnotherRemoved) {
    waitForEvents();
    const auto all = events();
    EXPECT_TRUE(
        run(store->update(all[1].id, {{}, at("2026-03-28T15:00:00Z"), at("2026-03-28T16:00:00Z"), {}}, {}))
            .value());
    EXPECT_TRUE(run(store->remove(all[3].id, {})).value());
    EXPECT_TRUE(eventually([this] {
        const auto series = onServer("RRULE:FREQ=DAILY");
        return series.contains("RECURRENCE-ID") && series.contains("EXDATE");
    })) << onServer("RRULE");
    std::vector<std::string> starts;
    for (const auto& each : events())
        if (each.title == "series") starts.push_back(formatDate(each.start));
    EXPECT_EQ(starts, (std::vector<std::string>{"2026-03-27T08:00:00Z", "2026-03-28T15:00:00Z",
                                                "2026-03-30T07:00:00Z"}));
}

TEST_F(CalDavTest, WithoutItsServerItKeepsWhatItHas) {
    waitForEvents();
    server.stop();
    EXPECT_EQ(events().size(), 5U);
    const auto made = run(
        store->create({"Bez sítě", at("2026-04-01T10:00:00Z"), at("2026-04-01T11:00:00Z"), {}, remote}, {}));
    if (!made) {
        EXPECT_FALSE(made.error().popis().czech().empty());
        EXPECT_EQ(events().size(), 5U);
        return;
    }
    // The service keeps it until it reaches the server again.
    EXPECT_EQ(events().size(), 6U);
}

} // namespace
} // namespace morvex
