#pragma once

#include "platform/linux/evolution/Recurrence.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace morvex {

using Component = GLibHandle<ICalComponent>;

/// One occurrence, with the component that describes it.
struct Occurrence {
    ICalComponent* component = nullptr; ///< belongs to its series
    bool isOwn = true;                  ///< whether the component describes this occurrence alone
    std::string key;                    ///< the recurrence of its `EventId`
    IcalTime start;
    std::chrono::seconds length{0}; ///< by the clock
    std::chrono::sys_seconds begins;
    std::chrono::sys_seconds ends; ///< of a whole day its last second
};

/// All components of one UID: the series, or the single event, and the occurrences that were changed. Of an
/// invitation to one date there is no series.
class EventSeries {
  public:
    /// Of what a calendar gives, by UID.
    static std::map<std::string, EventSeries> grouped(std::vector<Component> components);

    /// What overlaps the time from `from` to `to`. Cancelled ones are left out.
    [[nodiscard]] std::vector<Occurrence> between(std::chrono::sys_seconds from, std::chrono::sys_seconds to,
                                                  const TimeZone& local, const ZoneLookup& zones) const;

    /// The one of this key.
    [[nodiscard]] std::optional<Occurrence> named(const std::string& key, const TimeZone& local,
                                                  const ZoneLookup& zones) const;

    [[nodiscard]] ICalComponent* master() const { return master_.get(); }

    [[nodiscard]] const std::vector<Component>& changed() const { return changed_; }

    /// From which time a changed occurrence was planned, as the series counts.
    [[nodiscard]] std::string keyOf(ICalComponent* changed, const TimeZone& local,
                                    const ZoneLookup& zones) const;

  private:
    Component master_;
    std::vector<Component> changed_;
};

bool isCancelled(ICalComponent* component);

} // namespace morvex
