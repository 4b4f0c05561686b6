#pragma once

#include "relay/Origin.h"
#include "relay/RelayLog.h"

#include <chrono>
#include <cstddef>
#include <list>
#include <map>
#include <string>
#include <string_view>
#include <utility>

namespace morvex {

/// The log lines that strangers can cause: limited per minute for each kind and site, and in total. Omitted
/// lines are counted, and the count is logged when the minute is over. One thread.
class EventLog {
  public:
    using Moment = std::chrono::steady_clock::time_point;

    struct Bounds {
        std::size_t ofOneKind = 20; ///< lines per minute and site
        std::size_t ofAll = 1000;   ///< lines per minute
        std::size_t kinds = 4096;   ///< remembered pairs of kind and site; the oldest goes first
    };

    EventLog(RelayLog sink, const Bounds& bounds) : sink_(std::move(sink)), bounds_(bounds) {}

    /// `kind` is one of a few fixed texts, `line` the log line for this event.
    void note(const std::string& kind, const Origin& origin, std::string_view line, Moment now);
    /// Call periodically: logs how many lines were omitted in the minutes that are over.
    void tick(Moment now);

  private:
    using Key = std::pair<std::string, Prefix>;

    struct Minute {
        Key key;
        Moment start;
        std::size_t lines = 0;
        std::size_t leftOut = 0;
    };

    using Minutes = std::list<Minute>;

    Minute& minuteOf(const std::string& kind, const Origin& origin, Moment now);
    void endOldest();
    void endMinuteOfAll();

    RelayLog sink_;
    Bounds bounds_;
    Minutes minutes_; ///< ordered by their start
    std::map<Key, Minutes::iterator> byKey_;
    Minute all_;
};

} // namespace morvex
