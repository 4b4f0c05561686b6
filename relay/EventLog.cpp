#include "relay/EventLog.h"

#include <iterator>

namespace morvex {

namespace {

constexpr std::chrono::minutes span{1};

} // namespace

void EventLog::note(const std::string& kind, const Origin& origin, std::string_view line, Moment now) {
    tick(now);
    if (all_.lines == 0) all_.start = now;
    if (all_.lines == bounds_.ofAll) {
        ++all_.leftOut;
        return;
    }
    auto& minute = minuteOf(kind, origin, now);
    if (minute.lines == bounds_.ofOneKind) {
        ++minute.leftOut;
        return;
    }
    ++minute.lines;
    ++all_.lines;
    sink_(line);
}

void EventLog::tick(Moment now) {
    while (!minutes_.empty() && now - minutes_.front().start >= span) endOldest();
    if (now - all_.start >= span) endMinuteOfAll();
}

EventLog::Minute& EventLog::minuteOf(const std::string& kind, const Origin& origin, Moment now) {
    const Key key{kind, origin.site()};
    if (const auto found = byKey_.find(key); found != byKey_.end()) return *found->second;
    if (minutes_.size() == bounds_.kinds) endOldest();
    minutes_.push_back({.key = key, .start = now});
    byKey_[key] = std::prev(minutes_.end());
    return minutes_.back();
}

void EventLog::endOldest() {
    const auto& oldest = minutes_.front();
    if (oldest.leftOut > 0)
        sink_(oldest.key.first + ": " + std::to_string(oldest.leftOut) +
              " more from one address in a minute");
    byKey_.erase(oldest.key);
    minutes_.pop_front();
}

void EventLog::endMinuteOfAll() {
    if (all_.leftOut > 0) sink_(std::to_string(all_.leftOut) + " more events in a minute");
    all_ = {};
}

} // namespace morvex
