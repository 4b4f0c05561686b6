#pragma once

#include "app/organizer/CalendarTools.h"
#include "app/organizer/ContactsTools.h"
#include "app/organizer/RemindersTools.h"
#include "platform/memory/FakeCalendarStore.h"
#include "platform/memory/FakeContactStore.h"
#include "platform/memory/FakePlaceSearch.h"
#include "platform/memory/FakeReminderStore.h"
#include "platform/memory/FixedLocalTime.h"
#include "platform/memory/ManualClock.h"
#include "platform/memory/ManualExecutor.h"
#include "platform/memory/MemoryDefaults.h"
#include "shared/wire/Json.h"

#include <gtest/gtest.h>

#include <chrono>
#include <optional>
#include <stop_token>
#include <string>
#include <utility>
#include <vector>

namespace morvex {

/// The services of calendars, reminders and contacts with their tools, over stores in memory. The computer is
/// in Prague.
class OrganizerFixture : public testing::Test {
  protected:
    OrganizerFixture() {
        calendarTools.addTo(table, [this] { return isOn; });
        remindersTools.addTo(table, [this] { return isOn; });
        contactsTools.addTo(table, [this] { return isOn; });
        calendars.has = {{"work", "Práce", "Firma", true},
                         {"home", "Domov", "Doma", true},
                         {"feast", "Svátky", "Doma", false}};
        reminders.has = {{"shop", "Nákup", true}, {"rest", "Ostatní", true}};
        reminders.usual = "rest";
    }

    /// The answer of a tool, as JSON; `ok` tells whether it did its work.
    std::string call(const std::string& tool, const boost::json::object& arguments) {
        const auto outcome = executor.run(run(tool, arguments));
        if (!outcome) return "waits";
        ok = outcome->ok;
        return encode(outcome->result);
    }

    /// The answer of a tool that waited, after this time.
    std::string after(std::chrono::seconds time, const std::string& tool,
                      const boost::json::object& arguments) {
        std::optional<ToolOutcome> outcome;
        executor.start(store(run(tool, arguments), &outcome));
        executor.runUntilIdle();
        clock.advance(time);
        executor.runUntilIdle();
        calls.request_stop();
        executor.runUntilIdle();
        calls = std::stop_source();
        return outcome ? encode(outcome->result) : "waits";
    }

    [[nodiscard]] std::vector<std::string> offered() const {
        std::vector<std::string> names;
        for (const auto& tool : table.offered()) names.push_back(tool.name);
        return names;
    }

    static std::string refusal(const std::string& words) { return R"({"error":")" + words + R"("})"; }

    void enable(const std::string& id, bool enabled) {
        EXPECT_TRUE(executor.run(calendar.setCalendarEnabled(id, enabled)).value().has_value());
    }

    static Date at(int day, int hour, int minute = 0) {
        using namespace std::chrono;
        return sys_days{year{2026} / March / day} + hours{hour} + minutes{minute};
    }

    Task<ToolOutcome> run(const std::string& tool, const boost::json::object& arguments) {
        return table.find(tool)->run({tool, arguments, "r", calls.get_token()});
    }

    static Task<void> store(Task<ToolOutcome> task, std::optional<ToolOutcome>* outcome) {
        outcome->emplace(co_await std::move(task));
    }

    ManualExecutor executor;
    ManualClock clock;
    MemoryDefaults defaults;
    FixedLocalTime localTime;
    FakeCalendarStore calendars;
    FakeReminderStore reminders;
    FakeContactStore contacts;
    FakePlaceSearch places;
    std::stop_source calls;  ///< abandons the calls of tools
    std::stop_source ending; ///< ends the program
    bool isOn = true;
    bool ok = false;
    std::vector<std::pair<std::string, std::string>> namedPlaces; ///< names and addresses
    MacCalendarService calendar{{calendars, defaults, clock}};
    MacRemindersService reminderService{{reminders, places, clock}};
    MacContactsService contactService{{contacts, clock}};
    CalendarTools calendarTools{calendar, localTime, {clock, ending.get_token()}};
    RemindersTools remindersTools{reminderService,
                                  localTime,
                                  [this](std::optional<std::string> text) {
                                      for (const auto& [name, address] : namedPlaces)
                                          if (text == name) text = address;
                                      return text;
                                  },
                                  {clock, ending.get_token()}};
    ContactsTools contactsTools{contactService, {clock, ending.get_token()}};
    ToolTable table;
};

} // namespace morvex
