#pragma once

#include "app/features/Feature.h"
#include "app/organizer/CalendarTools.h"
#include "app/organizer/ContactsTools.h"
#include "app/organizer/RemindersTools.h"
#include "foundation/OneShot.h"

#include <chrono>
#include <memory>

namespace morvex {

/// Calendars, reminders and contacts of the desktop.
class OrganizerFeature final : public Feature {
  public:
    /// How long the start of the program waits to learn which calendars there are.
    static constexpr std::chrono::seconds patience{5};

    OrganizerFeature(FeatureContext& context, RemindersTools::ResolvePlace resolvePlace);

    [[nodiscard]] MacCalendarService& calendar() { return calendar_; }

    [[nodiscard]] MacRemindersService& reminders() { return reminders_; }

    [[nodiscard]] MacContactsService& contacts() { return contacts_; }

    /// Looks at all three once, so that the first offer is true. What takes too long goes on in the
    /// background; the status is sent behind it.
    Task<void> prepare() override;
    Task<void> refresh() override;

  private:
    using FirstLook = OneShot<bool>;

    Task<void> firstLook(std::shared_ptr<FirstLook> ended);
    Task<void> look();
    /// The desktop has other calendars, or they can be reached again.
    void storeChanged();
    Task<void> reload();

    FeatureContext& context_;
    MacCalendarService calendar_;
    MacRemindersService reminders_;
    MacContactsService contacts_;
    CalendarTools calendarTools_;
    RemindersTools remindersTools_;
    ContactsTools contactsTools_;
    bool isReloading_ = false;
    bool hasChangedAgain_ = false;
    Connection choiceChanged_;
    Connection storeChanged_;
};

} // namespace morvex
