#include "app/organizer/CalendarChoice.h"

#include <algorithm>
#include <utility>

namespace morvex {

namespace {

constexpr const char* selectedKey = "calendar.selectedIDs";
constexpr const char* writeKey = "calendar.writeID";
constexpr const char* configuredKey = "calendar.selectionConfigured";

std::set<std::string> storedIDs(const UserDefaults& defaults) {
    const auto ids = defaults.texts(selectedKey).value_or(std::vector<std::string>());
    return {ids.begin(), ids.end()};
}

bool has(const std::vector<CalendarInfo>& calendars, const std::string& id) {
    return std::ranges::find(calendars, id, &CalendarInfo::id) != calendars.end();
}

} // namespace

CalendarChoice::CalendarChoice(UserDefaults& defaults)
    : defaults_(defaults),
      changes_(defaults),
      selectedIDs_(storedIDs(defaults)),
      writeCalendarID_(defaults.text(writeKey)),
      selectionConfigured_(defaults.boolean(configuredKey).value_or(false)) {}

std::set<std::string> CalendarChoice::chosen(const std::vector<CalendarInfo>& present) const {
    if (selectionConfigured_) return selectedIDs_;
    std::set<std::string> all;
    for (const auto& calendar : present) all.insert(calendar.id);
    return all;
}

DefaultsValues CalendarChoice::values(const std::set<std::string>& selected, bool isConfigured,
                                      const std::optional<std::string>& writeID) {
    DefaultsValues values;
    values.emplace(selectedKey, std::vector<DefaultsItem>(selected.begin(), selected.end()));
    values.emplace(configuredKey, isConfigured);
    if (writeID) values.emplace(writeKey, *writeID);
    return values;
}

void CalendarChoice::forbid(const std::string& id, const std::vector<CalendarInfo>& present) {
    turningOn_.erase(id);
    selectedIDs_ = chosen(present);
    selectionConfigured_ = true;
    selectedIDs_.erase(id);
    if (writeCalendarID_ == id) forgetWriteCalendar();
    keep();
}

Task<Result<bool>> CalendarChoice::allow(std::string id, const std::vector<CalendarInfo>& present) {
    turningOn_.insert(id);
    bool isWanted = false;
    std::set<std::string> selected;
    auto chosenNow = [&] {
        isWanted = turningOn_.contains(id);
        selected = chosen(present);
        if (isWanted) selected.insert(id);
        return values(selected, true, writeCalendarID_);
    };
    auto saved = co_await changes_.make(chosenNow, [&] {
        selectedIDs_ = std::move(selected);
        selectionConfigured_ = true;
    });
    turningOn_.erase(id);
    if (!saved) co_return fail(std::move(saved).error());
    co_return isWanted;
}

Task<Result<bool>> CalendarChoice::setWriteCalendar(std::string id) {
    const auto number = ++writeChoices_;
    bool isWanted = false;
    auto chosenNow = [&] {
        isWanted = number == writeChoices_ && allows(id);
        return values(selectedIDs_, selectionConfigured_, isWanted ? id : writeCalendarID_);
    };
    auto saved = co_await changes_.make(chosenNow, [&] {
        if (isWanted) writeCalendarID_ = id;
    });
    if (!saved) co_return fail(std::move(saved).error());
    co_return isWanted;
}

void CalendarChoice::clearWriteCalendar() {
    forgetWriteCalendar();
    keep();
}

void CalendarChoice::forgetWriteCalendar() {
    ++writeChoices_;
    writeCalendarID_.reset();
}

void CalendarChoice::prune(const std::vector<CalendarInfo>& present) {
    const auto isGone = [&](const std::string& id) { return !has(present, id); };
    // A save that is under way must not bring it back.
    bool isOther = std::erase_if(turningOn_, isGone) > 0;
    if (selectionConfigured_) isOther = std::erase_if(selectedIDs_, isGone) > 0 || isOther;
    if (writeCalendarID_ && !has(present, *writeCalendarID_)) {
        forgetWriteCalendar();
        isOther = true;
    }
    if (isOther) keep();
}

void CalendarChoice::keep() {
    std::vector<std::string> removed;
    if (!writeCalendarID_) removed.emplace_back(writeKey);
    defaults_.changeTogether(values(selectedIDs_, selectionConfigured_, writeCalendarID_), removed);
}

} // namespace morvex
