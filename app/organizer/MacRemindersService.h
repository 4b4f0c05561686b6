#pragma once

#include "app/organizer/PersonalAccess.h"
#include "app/organizer/PersonalServiceError.h"
#include "platform/ports/PlaceSearch.h"
#include "platform/ports/ReminderStore.h"

#include <functional>
#include <optional>
#include <stop_token>
#include <string>
#include <utility>
#include <vector>

namespace morvex {

struct ReminderToCreate {
    std::string title;
    std::optional<Date> due;
    std::optional<std::string> location; ///< an address; a blank one counts as none
    bool arrive = true;                  ///< else the reminder is one on leaving
    std::optional<std::string> listName; ///< compared without regard to case and diacritics
};

/// The reminders of this computer. Owned by the feature; main thread only. The owner ends all tasks before it
/// destroys this object.
class MacRemindersService {
  public:
    struct Services {
        ReminderStore& store;
        PlaceSearch& places;
        Clock& clock;
    };

    explicit MacRemindersService(Services services)
        : services_(services), access_(services.store, services.clock) {}

    [[nodiscard]] DataAccess authorizationStatus() const { return access_.status(); }

    [[nodiscard]] Sentence statusText() const;

    /// Why the reminders could not be asked the last time; for views.
    [[nodiscard]] const std::optional<Sentence>& accessError() const { return access_.error(); }

    /// Whether this computer itself alerts at the place of a reminder.
    [[nodiscard]] bool ringsAtPlaces() const { return services_.store.ringsAtPlaces(); }

    /// `accessError` tells a failure.
    Task<void> requestAccess(std::stop_token stop = {}) { return access_.request(std::move(stop)); }

    /// Looks for a service that was out of reach. Opens no question to the user.
    Task<void> refresh(std::stop_token stop = {}) { return access_.look(std::move(stop)); }

    // Every operation below asks for access where that is open. They fail with `PersonalServiceError` or with
    // the words of the store.

    /// Those of all lists, in the order of the store.
    Task<Result<std::vector<Reminder>>> list(bool includeCompleted, std::stop_token stop);

    /// Returns the id. Nothing is created if the place is not found. A list that does not exist counts as
    /// none; without one the reminder goes where the desktop puts it.
    Task<Result<std::string>> createReminder(ReminderToCreate reminder, std::stop_token stop);

    /// Completes one that is completed already, too.
    Task<Result<Reminder>> completeReminder(std::string id, std::stop_token stop);

    /// For views: called when the status or the error may have changed.
    [[nodiscard]] Connection onRowsChange(std::function<void()> call) {
        return access_.onChange(std::move(call));
    }

  private:
    Task<Result<void>> ensureAccess(std::stop_token stop);
    Task<Result<std::optional<PlaceAlarm>>> alarmAt(std::string location, bool arrive, std::stop_token stop);
    Task<Result<std::string>> listFor(std::optional<std::string> name, std::stop_token stop);

    Services services_;
    PersonalAccess access_;
};

} // namespace morvex
