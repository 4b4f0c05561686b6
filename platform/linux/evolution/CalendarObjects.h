#pragma once

#include "platform/linux/evolution/EventId.h"
#include "platform/linux/evolution/EventSeries.h"
#include "platform/linux/evolution/EvolutionDesktop.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace morvex {

// What the calendars and the task lists do alike with the objects of a client. On the thread of the desktop.

/// A client, and what its calls need.
struct CalendarCall {
    ECalClient* client;
    const TimeZone& local;
    GCancellable* cancellable;
    GLibError& error;

    /// Asks the calendar for each zone once.
    [[nodiscard]] ZoneLookup zones() const;

    /// By an expression of the service.
    [[nodiscard]] Result<std::vector<Component>> query(const std::string& expression) const;

    /// All of one UID; none if there is no such object.
    [[nodiscard]] Result<EventSeries> series(const std::string& uid) const;

    /// The time of a moment by the clocks of this computer, whose zone the calendar then knows.
    [[nodiscard]] Result<IcalTime> localTime(std::chrono::sys_seconds moment) const;

    Result<void> create(ICalComponent* component) const;
    Result<void> modify(ICalComponent* component, ECalObjModType which) const;
    Result<void> remove(const std::string& uid, const char* recurrence) const;

    [[nodiscard]] std::unexpected<Error> failure() const { return fail(evolutionFailure(error)); }

    std::shared_ptr<std::map<std::string, ICalTimezone*>> zonesAskedFor =
        std::make_shared<std::map<std::string, ICalTimezone*>>();
};

/// Replaces the property of this kind by one of this time.
void setTime(ICalComponent* component, ICalPropertyKind kind, const IcalTime& time);
void removeAll(ICalComponent* component, ICalPropertyKind kind);

/// With a UID of its own and the present time as that of its making.
Component newComponent(ICalComponentKind kind);

} // namespace morvex
