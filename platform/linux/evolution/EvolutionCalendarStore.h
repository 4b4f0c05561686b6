#pragma once

#include "platform/linux/evolution/EvolutionService.h"
#include "platform/ports/CalendarStore.h"

namespace morvex {

/// The calendars of the desktop, by its service. Cancelled events are left out. An event that is written has
/// its times by the zone of this computer; one that would end before it starts has no length.
class EvolutionCalendarStore final : public EvolutionStore<CalendarStore> {
  public:
    using EvolutionStore::EvolutionStore;

    Task<Result<std::vector<CalendarInfo>>> calendars(std::stop_token stop) override;
    Task<Result<std::optional<std::string>>> defaultCalendar(std::stop_token stop) override;
    Task<Result<std::vector<CalendarEvent>>> events(Date from, Date to, std::vector<std::string> calendars,
                                                    std::size_t limit, std::stop_token stop) override;
    Task<Result<std::optional<CalendarEvent>>> event(std::string id, std::stop_token stop) override;
    Task<Result<std::string>> create(NewCalendarEvent event, std::stop_token stop) override;
    Task<Result<bool>> update(std::string id, CalendarEventChange change, std::stop_token stop) override;
    Task<Result<bool>> remove(std::string id, std::stop_token stop) override;
};

} // namespace morvex
