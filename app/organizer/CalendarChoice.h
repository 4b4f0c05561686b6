#pragma once

#include "platform/ports/CalendarStore.h"
#include "platform/ports/RightsChanges.h"
#include "platform/ports/UserDefaults.h"

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace morvex {

/// Which calendars the user allows, and which one takes new events where none is named. Until the user has
/// chosen for the first time, every calendar is allowed. Stored in the user defaults. Part of
/// `MacCalendarService`; main thread only. The owner ends all tasks before it destroys this object.
class CalendarChoice {
  public:
    /// Reads the stored choice; what cannot be read counts as missing. `defaults` outlives this object.
    explicit CalendarChoice(UserDefaults& defaults);

    [[nodiscard]] bool allows(const std::string& id) const {
        return !selectionConfigured_ || selectedIDs_.contains(id);
    }

    /// Whether the user has chosen at all.
    [[nodiscard]] bool isMade() const { return selectionConfigured_; }

    [[nodiscard]] const std::optional<std::string>& writeCalendarID() const { return writeCalendarID_; }

    /// Takes effect at once. The first choice keeps all others of `present` as they are.
    void forbid(const std::string& id, const std::vector<CalendarInfo>& present);

    /// Takes effect once it is saved; fails with the error of the save. Returns whether it took effect: the
    /// calendar may have been forbidden meanwhile. `present` is asked anew when the save has to be repeated
    /// and outlives the task.
    Task<Result<bool>> allow(std::string id, const std::vector<CalendarInfo>& present);

    /// The same for the calendar that takes new events, which must be allowed.
    Task<Result<bool>> setWriteCalendar(std::string id);

    void clearWriteCalendar();

    /// Forgets the calendars that are not among all that there are.
    void prune(const std::vector<CalendarInfo>& present);

  private:
    [[nodiscard]] std::set<std::string> chosen(const std::vector<CalendarInfo>& present) const;
    [[nodiscard]] static DefaultsValues values(const std::set<std::string>& selected, bool isConfigured,
                                               const std::optional<std::string>& writeID);
    void forgetWriteCalendar();
    void keep();

    UserDefaults& defaults_;
    RightsChanges changes_;
    std::set<std::string> selectedIDs_;
    std::optional<std::string> writeCalendarID_;
    bool selectionConfigured_ = false;
    std::set<std::string> turningOn_; ///< calendars that are being allowed
    std::uint64_t writeChoices_ = 0;  ///< of several choices at a time only the last one counts
};

} // namespace morvex
