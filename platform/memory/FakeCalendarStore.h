#pragma once

#include "platform/memory/FakePersonalData.h"
#include "platform/ports/CalendarStore.h"
#include "shared/base/Try.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace morvex {

/// Calendars in memory. Events are listed as the test has put them there.
class FakeCalendarStore final : public FakePersonalData<CalendarStore> {
  public:
    struct Range {
        Date from;
        Date to;
        std::vector<std::string> calendars;
        std::size_t limit = 0;
    };

    Task<Result<std::vector<CalendarInfo>>> calendars(std::stop_token stop) override {
        auto listed = has;
        CO_CHECK(co_await begin(std::move(stop)));
        co_return listed;
    }

    Task<Result<std::optional<std::string>>> defaultCalendar(std::stop_token stop) override {
        CO_CHECK(co_await begin(std::move(stop)));
        co_return usual;
    }

    Task<Result<std::vector<CalendarEvent>>> events(Date from, Date to, std::vector<std::string> calendars,
                                                    std::size_t limit, std::stop_token stop) override {
        ranges.push_back({from, to, std::move(calendars), limit});
        CO_CHECK(co_await begin(std::move(stop)));
        co_return held;
    }

    Task<Result<std::optional<CalendarEvent>>> event(std::string id, std::stop_token stop) override {
        CO_CHECK(co_await begin(std::move(stop)));
        const auto found = std::ranges::find(held, id, &CalendarEvent::id);
        co_return found == held.end() ? std::nullopt : std::optional(*found);
    }

    Task<Result<std::string>> create(NewCalendarEvent event, std::stop_token stop) override {
        CO_CHECK(co_await begin(std::move(stop)));
        created.push_back(std::move(event));
        co_return "new";
    }

    Task<Result<bool>> update(std::string id, CalendarEventChange change, std::stop_token stop) override {
        CO_CHECK(co_await begin(std::move(stop)));
        updated.emplace_back(std::move(id), std::move(change));
        co_return isThereToChange;
    }

    Task<Result<bool>> remove(std::string id, std::stop_token stop) override {
        CO_CHECK(co_await begin(std::move(stop)));
        removed.push_back(std::move(id));
        co_return isThereToChange;
    }

    std::vector<CalendarInfo> has;
    std::optional<std::string> usual; ///< the id of the default calendar
    std::vector<CalendarEvent> held;
    bool isThereToChange = true; ///< whether an event that was found can still be changed
    std::vector<Range> ranges;   ///< that were asked for
    std::vector<NewCalendarEvent> created;
    std::vector<std::pair<std::string, CalendarEventChange>> updated;
    std::vector<std::string> removed;
};

} // namespace morvex
