#pragma once

#include "foundation/ThreadExecutor.h"
#include "platform/linux/evolution/CalendarObjects.h"
#include "platform/linux/evolution/EvolutionCalendarStore.h"
#include "platform/memory/FixedLocalTime.h"
#include "tests/support/Await.h"
#include "tests/support/PrivateDesktop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <string>
#include <vector>

namespace morvex {

/// A desktop of its own, and the service over it.
class EvolutionTest : public testing::Test {
  protected:
    static inline const std::string personal = "system-calendar";
    static inline const std::string tasks = "system-task-list";

    void SetUp() override {
        desktop.emplace();
        service.emplace(main, localTime);
    }

    ~EvolutionTest() override {
        service.reset();
        // One that a test has stopped would stay.
        for (const char* name : {PrivateDesktop::calendars, PrivateDesktop::books, PrivateDesktop::registry})
            if (const auto process = desktop ? processOf(name) : 0) ::kill(process, SIGKILL);
        desktop.reset();
    }

    /// The process that has a name on the bus, or 0.
    static pid_t processOf(const char* name) {
        const char* address = std::getenv("DBUS_SESSION_BUS_ADDRESS");
        GLibHandle<GDBusConnection> bus(g_dbus_connection_new_for_address_sync(
            address,
            static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                              G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
            nullptr, nullptr, nullptr));
        if (!bus) return 0;
        GLibHandle<GVariant, g_variant_unref> answer(g_dbus_connection_call_sync(
            bus.get(), "org.freedesktop.DBus", "/", "org.freedesktop.DBus", "GetConnectionUnixProcessID",
            g_variant_new("(s)", name), nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr));
        guint32 process = 0;
        if (answer) g_variant_get(answer.get(), "(u)", &process);
        return static_cast<pid_t>(process);
    }

    template <class T> T run(Task<T> task) { return await(main, std::move(task)); }

    /// Puts an object into a source as another program would.
    void put(const std::string& source, const std::string& text, SourceKind kind = SourceKind::events,
             const std::string& zone = "") {
        auto done = run(
            service->run({}, [=](EvolutionDesktop& there, const TimeZone& local, GCancellable* cancellable) {
                return there.with<void>(
                    kind, source, cancellable, [&](EClient* client, GLibError& error) -> Result<void> {
                        const CalendarCall call{E_CAL_CLIENT(client), local, cancellable, error};
                        if (!zone.empty()) {
                            const Component defined(i_cal_component_new_from_string(zone.c_str()));
                            GLibHandle<ICalTimezone> made(i_cal_timezone_new());
                            i_cal_timezone_set_component(made.get(), i_cal_component_clone(defined.get()));
                            e_cal_client_add_timezone_sync(E_CAL_CLIENT(client), made.get(), cancellable,
                                                           error.slot());
                            if (error) return call.failure();
                        }
                        const Component component(i_cal_component_new_from_string(text.c_str()));
                        require(component != nullptr, "a test's object cannot be read");
                        return call.create(component.get());
                    });
            }));
        ASSERT_TRUE(done.has_value()) << done.error().popis();
    }

    /// The stored objects of a UID, as text.
    std::vector<std::string> stored(const std::string& source, const std::string& uid,
                                    SourceKind kind = SourceKind::events) {
        auto done = run(
            service->run({}, [=](EvolutionDesktop& there, const TimeZone& local, GCancellable* cancellable) {
                return there.with<std::vector<std::string>>(
                    kind, source, cancellable,
                    [&](EClient* client, GLibError& error) -> Result<std::vector<std::string>> {
                        const CalendarCall call{E_CAL_CLIENT(client), local, cancellable, error};
                        std::vector<std::string> texts;
                        auto series = call.series(uid);
                        if (!series) return fail(series.error());
                        const auto add = [&](ICalComponent* each) {
                            GLibHandle<char, g_free> text(i_cal_component_as_ical_string(each));
                            std::string unfolded = text.get();
                            for (auto at = unfolded.find("\r\n "); at != std::string::npos;
                                 at = unfolded.find("\r\n "))
                                unfolded.erase(at, 3);
                            texts.push_back(unfolded);
                        };
                        if (series->master()) add(series->master());
                        for (const auto& each : series->changed()) add(each.get());
                        return texts;
                    });
            }));
        return done ? *done : std::vector<std::string>{done.error().popis().czech()};
    }

    /// Counts the changes that a store tells, on the thread where it does.
    class Changes {
      public:
        Changes(Executor& main, PersonalDataStore& store) : main_(main) {
            await(main_, [](Changes* self, PersonalDataStore* from) -> Task<bool> {
                self->connection_ = from->onChange([self] { ++self->told; });
                co_return true;
            }(this, &store));
        }

        ~Changes() {
            await(main_, [](Changes* self) -> Task<bool> {
                self->connection_.reset();
                co_return true;
            }(this));
        }

        Changes(const Changes&) = delete;
        Changes& operator=(const Changes&) = delete;

        std::atomic_int told = 0;

      private:
        Executor& main_;
        std::optional<Connection> connection_;
    };

    template <class Condition> static bool eventually(Condition condition) {
        const auto giveUp = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        while (!condition()) {
            if (std::chrono::steady_clock::now() > giveUp) return false;
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        return true;
    }

    ThreadExecutor main{"main"};
    FixedLocalTime localTime{"Europe/Prague"};
    std::optional<PrivateDesktop> desktop;
    std::optional<EvolutionService> service;
};

inline Date at(const std::string& text) {
    return parseWireDate(text).value();
}

/// An event as other programs write it.
inline std::string vevent(const std::string& uid, const std::string& lines) {
    return "BEGIN:VEVENT\r\nUID:" + uid + "\r\nSUMMARY:" + uid + "\r\nDTSTAMP:20260101T000000Z\r\n" + lines +
           "END:VEVENT\r\n";
}

} // namespace morvex
