#include "platform/linux/evolution/EvolutionService.h"

#include "platform/linux/evolution/EvolutionContactStore.h"
#include "platform/linux/evolution/EvolutionReminderStore.h"
#include "tests/platform/linux/evolution/EvolutionTest.h"
#include "tests/support/BusService.h"
#include "tests/support/PrivateBus.h"

#include <atomic>
#include <semaphore>

namespace morvex {
namespace {

using namespace std::chrono_literals;

class EvolutionServiceTest : public EvolutionTest {
  protected:
    /// As the program of an account does it, at once.
    static void addCalendarOfAccount(const char* id, const char* name, const char* account) {
        GLibHandle<ESourceRegistry> registry(e_source_registry_new_sync(nullptr, nullptr));
        GLibHandle<ESource> source(e_source_new_with_uid(id, nullptr, nullptr));
        e_source_set_display_name(source.get(), name);
        e_source_set_parent(source.get(), account);
        e_source_backend_set_backend_name(
            E_SOURCE_BACKEND(e_source_get_extension(source.get(), E_SOURCE_EXTENSION_CALENDAR)), "local");
        GList one{source.get(), nullptr, nullptr};
        require(e_source_registry_create_sources_sync(registry.get(), &one, nullptr, nullptr),
                "a test cannot add a calendar");
    }

    /// Stops some time after the call began.
    struct SoonStopped {
        explicit SoonStopped(std::chrono::milliseconds time = 300ms)
            : later([this, time] {
                  std::this_thread::sleep_for(time);
                  source.request_stop();
              }) {}

        std::stop_source source;
        std::jthread later;
    };
};

TEST_F(EvolutionServiceTest, AStoppedServiceHoldsNobodyAndTheNextCallsWork) {
    EvolutionCalendarStore store(*service);
    ASSERT_TRUE(run(store.calendars({})).has_value());
    const auto process = processOf(PrivateDesktop::calendars);
    ::kill(process, SIGSTOP);
    for (int call = 0; call < 2; ++call) {
        SoonStopped soon;
        const auto found = run(store.events(at("2026-03-20T00:00:00Z"), at("2026-04-20T00:00:00Z"),
                                            {personal}, 10, soon.source.get_token()));
        ASSERT_FALSE(found.has_value());
        EXPECT_NE(found.error().as<Abandoned>(), nullptr);
    }
    SoonStopped patient(5s);
    EXPECT_TRUE(run(service->requestAccess(patient.source.get_token())).has_value())
        << "what needs no calendar goes on";
    ::kill(process, SIGCONT);
    EXPECT_TRUE(run(store.events(at("2026-03-20T00:00:00Z"), at("2026-04-20T00:00:00Z"), {personal}, 10, {}))
                    .has_value());
}

TEST_F(EvolutionServiceTest, AKilledServiceIsStartedAgain) {
    EvolutionCalendarStore store(*service);
    const auto id =
        run(store.create({"x", at("2026-03-28T10:00:00Z"), at("2026-03-28T11:00:00Z"), {}, personal}, {}));
    ASSERT_TRUE(id.has_value());
    ::kill(processOf(PrivateDesktop::calendars), SIGKILL);
    EXPECT_TRUE(run(store.event(*id, {})).value().has_value());
    ::kill(processOf(PrivateDesktop::calendars), SIGKILL);
    EXPECT_TRUE(
        run(store.create({"y", at("2026-03-28T10:00:00Z"), at("2026-03-28T11:00:00Z"), {}, personal}, {}))
            .has_value());
}

TEST_F(EvolutionServiceTest, AServiceThatIsKilledWithinACallIsAskedAgain) {
    EvolutionCalendarStore store(*service);
    ASSERT_TRUE(run(store.calendars({})).has_value());
    const NewCalendarEvent wanted{"x", at("2026-03-28T10:00:00Z"), at("2026-03-28T11:00:00Z"), {}, personal};
    const auto process = processOf(PrivateDesktop::calendars);
    ::kill(process, SIGSTOP);
    std::jthread killer([process] {
        std::this_thread::sleep_for(200ms);
        ::kill(process, SIGKILL);
    });
    const auto id = run(store.create(wanted, {}));
    ASSERT_TRUE(id.has_value()) << id.error().popis();
    EXPECT_TRUE(run(store.event(*id, {})).value().has_value());
    EXPECT_EQ(run(store.events(wanted.start, wanted.end, {personal}, 10, {})).value().size(), 1U);
}

/// As if only the answer to the first attempt was lost.
TEST_F(EvolutionServiceTest, AnObjectThatIsMadeTwiceIsThereOnce) {
    const auto event = vevent("twice", "DTSTART:20260328T100000Z\r\nDTEND:20260328T110000Z\r\n");
    put(personal, event);
    put(personal, event);
    EXPECT_EQ(stored(personal, "twice").size(), 1U);
}

TEST_F(EvolutionServiceTest, TheEndLeavesACallThatBlocks) {
    ASSERT_TRUE(run(service->requestAccess({})).has_value());

    struct State {
        std::atomic_bool isOver = false;
        std::atomic_bool gaveUp = false;
        std::atomic_bool isDone = false;
    };

    const auto state = std::make_shared<State>();
    SoonStopped soon;
    const auto stopped = run(service->run(
        soon.source.get_token(), [state](EvolutionDesktop&, const TimeZone&, GCancellable*) -> Result<void> {
            for (int wait = 0; wait < 3000 && !state->isOver; ++wait) std::this_thread::sleep_for(10ms);
            state->gaveUp = !state->isOver;
            state->isDone = true;
            return {};
        }));
    EXPECT_FALSE(stopped.has_value());
    service.reset();
    state->isOver = true;
    EXPECT_TRUE(eventually([&] { return state->isDone.load(); }));
    EXPECT_FALSE(state->gaveUp) << "the end waited for the call";
}

/// The accounts of the Internet make their calendars once the registry runs.
TEST_F(EvolutionServiceTest, TheFirstListHasTheCalendarsOfAnAccountThatMakesThemLate) {
    std::ofstream(desktop->sources() / "account.source")
        << "[Data Source]\nDisplayName=Jana\nEnabled=true\nParent=\n\n[Collection]\nBackendName=none\n"
           "CalendarEnabled=true\nContactsEnabled=false\n";
    EvolutionCalendarStore store(*service);
    std::jthread late([] {
        while (!processOf(PrivateDesktop::registry)) std::this_thread::sleep_for(10ms);
        std::this_thread::sleep_for(300ms);
        addCalendarOfAccount("late", "Pozdní", "account");
    });
    const auto calendars = run(store.calendars({}));
    ASSERT_TRUE(calendars.has_value());
    const auto isLate = [](const CalendarInfo& each) { return each.id == "late"; };
    const auto found = std::ranges::find_if(*calendars, isLate);
    ASSERT_NE(found, calendars->end());
    EXPECT_EQ(found->account, "Jana");
}

TEST_F(EvolutionServiceTest, AnAccountWithoutCalendarsIsNotWaitedForLong) {
    std::ofstream(desktop->sources() / "account.source")
        << "[Data Source]\nDisplayName=Jana\nEnabled=true\nParent=\n\n[Collection]\nBackendName=none\n"
           "CalendarEnabled=true\nContactsEnabled=true\n";
    EvolutionCalendarStore store(*service);
    EXPECT_EQ(run(store.calendars({})).value().size(), 2U);
}

TEST_F(EvolutionServiceTest, ASourceThatComesAndGoesIsTold) {
    EvolutionCalendarStore store(*service);
    ASSERT_TRUE(run(store.requestAccess({})).has_value());
    const Changes changes(main, store);
    const auto has = [&] {
        const auto calendars = run(store.calendars({})).value();
        return std::ranges::any_of(calendars, [](const auto& each) { return each.id == "work"; });
    };
    addCalendarOfAccount("work", "Práce", "local-stub");
    EXPECT_TRUE(eventually([&] { return changes.told > 0; }));
    EXPECT_TRUE(has());
    desktop->removeSource("work");
    EXPECT_TRUE(eventually([&] { return !has(); }));
}

TEST_F(EvolutionServiceTest, AThreadThatBlocksInACancelledCallIsReplaced) {
    ASSERT_TRUE(run(service->requestAccess({})).has_value());
    std::binary_semaphore over(0);
    SoonStopped soon;
    const auto stopped = run(service->run(
        soon.source.get_token(), [&over](EvolutionDesktop&, const TimeZone&, GCancellable*) -> Result<void> {
            over.acquire();
            return {};
        }));
    EXPECT_FALSE(stopped.has_value());
    std::this_thread::sleep_for(1100ms);
    EXPECT_TRUE(run(service->requestAccess({})).has_value());
    EXPECT_EQ(EvolutionThread::givenUp(), 1);
    EvolutionCalendarStore store(*service);
    const Changes changes(main, store);
    addCalendarOfAccount("work", "Práce", "local-stub");
    EXPECT_TRUE(eventually([&] { return changes.told > 0; })) << "the new thread hears nothing";
    over.release();
    EXPECT_TRUE(eventually([] { return EvolutionThread::givenUp() == 0; }));
}

TEST_F(EvolutionServiceTest, BeyondFourThreadsThatBlockEveryCallFails) {
    ASSERT_TRUE(run(service->requestAccess({})).has_value());
    std::counting_semaphore<8> over(0);
    const auto block = [&over](EvolutionDesktop&, const TimeZone&, GCancellable*) -> Result<void> {
        over.acquire();
        return {};
    };
    for (int thread = 0; thread < 5; ++thread) {
        SoonStopped soon;
        EXPECT_FALSE(run(service->run(soon.source.get_token(), block)).has_value());
        std::this_thread::sleep_for(1100ms);
    }
    const auto refused = run(service->requestAccess({}));
    ASSERT_FALSE(refused.has_value());
    EXPECT_EQ(refused.error().popis(), popis(SystemTrouble::serviceSilent));
    EXPECT_EQ(EvolutionThread::givenUp(), 4);
    over.release(5);
    EXPECT_TRUE(eventually([this] { return run(service->requestAccess({})).has_value(); }));
}

TEST_F(EvolutionServiceTest, RemindersAreMadeAndCompletedOnce) {
    EvolutionReminderStore store(*service);
    const NewReminder wanted{"Koupit", at("2026-03-28T10:00:59Z"),
                             PlaceAlarm{{"Dům \"u lípy\"; a, b\r\nEND:VALARM", 50.08, 14.42}, false}, tasks};
    const auto id = run(store.create(wanted, {}));
    ASSERT_TRUE(id.has_value()) << id.error().popis();
    const auto text = stored(tasks, EventId::parse(*id)->uid, SourceKind::tasks).front();
    for (const char* part :
         {"Europe/Prague:20260328T110000", "TRIGGER;VALUE=DATE-TIME:20260328T100000Z",
          "X-APPLE-PROXIMITY:DEPART", ":geo:50.080000,14.420000", "X-APPLE-RADIUS=200",
          "X-APPLE-STRUCTURED-LOCATION;VALUE=URI", "LOCATION:Dům", "X-TITLE=\"Dům 'u lípy'; a, b"})
        EXPECT_THAT(text, testing::HasSubstr(part));
    auto open = run(store.reminders(false, {})).value();
    ASSERT_EQ(open.size(), 1U);
    EXPECT_EQ(open.front().due, at("2026-03-28T10:00:00Z"));
    for (int time = 0; time < 2; ++time) EXPECT_TRUE(run(store.complete(*id, {})).value()->completed);
    EXPECT_TRUE(run(store.reminders(false, {})).value().empty());
    EXPECT_TRUE(run(store.reminders(true, {})).value().front().completed);
    EXPECT_THAT(stored(tasks, EventId::parse(*id)->uid, SourceKind::tasks).front(),
                testing::HasSubstr("X-APPLE-PROXIMITY:DEPART"));
    EXPECT_EQ(run(store.complete("nic", {})).value(), std::nullopt);
}

TEST_F(EvolutionServiceTest, OneOccurrenceOfARecurringTaskIsCompleted) {
    EvolutionReminderStore store(*service);
    put(tasks,
        "BEGIN:VTODO\r\nUID:t\r\nSUMMARY:t\r\nDTSTART:20260401T080000Z\r\nDUE:20260401T090000Z\r\nRRULE:FREQ="
        "DAILY;COUNT=3\r\nEND:VTODO\r\n",
        SourceKind::tasks);
    const auto first = run(store.reminders(false, {})).value().front();
    EXPECT_EQ(first.due, at("2026-04-01T09:00:00Z"));
    for (int time = 0; time < 2; ++time) EXPECT_TRUE(run(store.complete(first.id, {})).value()->completed);
    const auto open = run(store.reminders(false, {})).value();
    ASSERT_EQ(open.size(), 1U);
    EXPECT_EQ(open.front().due, at("2026-04-02T09:00:00Z"));
}

TEST(EvolutionServiceAlone, WithoutABusTheAccessIsRestricted) {
    for (const char* address : {"", "unix:path=/nonexistent/bus"}) {
        EnvironmentValue session("DBUS_SESSION_BUS_ADDRESS", address);
        ThreadExecutor main("main");
        FixedLocalTime localTime;
        EvolutionService service(main, localTime);
        EXPECT_EQ(service.access(), DataAccess::notDetermined);
        const auto reached = await(main, service.requestAccess({}));
        ASSERT_FALSE(reached.has_value());
        EXPECT_FALSE(reached.error().popis().empty());
        EXPECT_EQ(service.access(), DataAccess::restricted);
    }
}

TEST_F(EvolutionServiceTest, TheAccessEndsWithTheSessionBus) {
    EvolutionCalendarStore store(*service);
    ASSERT_TRUE(run(store.requestAccess({})).has_value());
    const Changes changes(main, store);
    desktop->end();
    EXPECT_FALSE(run(store.calendars({})).has_value());
    EXPECT_EQ(store.access(), DataAccess::restricted);
    EXPECT_TRUE(eventually([&] { return changes.told > 0; }));
}

TEST(EvolutionServiceAlone, ARegistryThatNeverComesHoldsNobody) {
    PrivateDesktop desktop(PrivateDesktop::registry);
    ThreadExecutor main("main");
    FixedLocalTime localTime;
    EvolutionService service(main, localTime);
    for (int call = 0; call < 2; ++call) {
        std::stop_source source;
        std::jthread later([&source] {
            std::this_thread::sleep_for(300ms);
            source.request_stop();
        });
        EXPECT_FALSE(await(main, service.requestAccess(source.get_token())).has_value());
        EXPECT_EQ(service.access(), DataAccess::restricted);
    }
}

TEST(EvolutionServiceAlone, WithoutTheServicesTheAccessIsRestricted) {
    PrivateBus bus;
    EnvironmentValue session("DBUS_SESSION_BUS_ADDRESS", bus.address());
    ThreadExecutor main("main");
    FixedLocalTime localTime;
    EvolutionService service(main, localTime);
    EXPECT_FALSE(await(main, service.requestAccess({})).has_value());
    EXPECT_EQ(service.access(), DataAccess::restricted);
}

TEST(EvolutionId, ReadsWhatItWritesAndNothingElse) {
    const EventId id{"a:b", "c%d\n é", "20260405T070000Z"};
    EXPECT_EQ(EventId::parse(id.text()), id);
    for (const char* text : {"", "a", "a:b", "a:b:x", ":b:", "a::", "a:b:2026040",
                             "%61:b:", "a:%zz:", "a:%ff:", "a:%00:", "a:b:c:"})
        EXPECT_EQ(EventId::parse(text), std::nullopt) << text;
    const std::string longest(8192 - 3, 'u');
    EXPECT_TRUE(EventId::parse("a:" + longest + ":").has_value());
    EXPECT_FALSE(EventId::parse("a:" + longest + "u:").has_value());
}

} // namespace
} // namespace morvex
