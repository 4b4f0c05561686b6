#pragma once

#include "tests/app/organizer/OrganizerFixture.h"

namespace morvex {

/// Calendars with three events: in one that can be written to, untitled in another, and in one for reading
/// alone.
class CalendarToolsFixture : public OrganizerFixture {
  protected:
    CalendarToolsFixture() {
        calendars.held = {
            {"e2", std::nullopt, at(29, 1), at(29, 2), false, "home", std::nullopt},
            {"e1", "Porada", at(14, 9), at(14, 10), false, "work", "Zasedačka"},
            {"e3", "Velikonoce", at(15, 23), at(16, 22, 59), true, "feast", std::nullopt},
        };
    }

    [[nodiscard]] bool isOffered() const {
        for (const auto& name : offered())
            if (name.starts_with("mac.calendar.")) return true;
        return false;
    }

    const std::string noAccess =
        "Morvex nemá plný přístup ke kalendářům na tomto Macu. Povol ho v okně Morvex nebo v "
        "Nastavení systému → Soukromí a zabezpečení → Kalendáře.";
    const boost::json::object range{{"from", "2026-03-14"}, {"to", "2026-03-31"}};
    const boost::json::object lunch{
        {"title", "Oběd"}, {"start", "2026-03-14T12:00:00+01:00"}, {"end", "2026-03-14T13:00:00+01:00"}};

    /// `lunch` in a calendar of this name.
    [[nodiscard]] boost::json::object lunchIn(const std::string& name) const {
        auto arguments = lunch;
        arguments["calendar"] = name;
        return arguments;
    }
};

} // namespace morvex
