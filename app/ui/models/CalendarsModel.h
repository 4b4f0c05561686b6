#pragma once

#include "app/companion/CompanionState.h"
#include "app/organizer/MacCalendarService.h"
#include "app/ui/models/RowList.h"
#include "app/ui/models/SwitchTrouble.h"
#include "foundation/TaskScope.h"

#include <QVariantList>

#include <string>
#include <vector>

namespace morvex {

/// The calendars of this computer: which of them Morvex may use, and which one takes new events.
class CalendarsModel final : public ViewModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("")
    /// Each row is a map: `id`, `name`, `account`, `beginsAccount` (the row before has another one),
    /// `writable`, `allowed`.
    Q_PROPERTY(morvex::RowList* rows READ rows CONSTANT)
    /// What can be chosen for new events, each a map: `name`, `calendar` (empty for none in particular).
    Q_PROPERTY(QVariantList writers READ writers NOTIFY writersChanged)
    Q_PROPERTY(int writerIndex READ writerIndex NOTIFY writerIndexChanged)
    Q_PROPERTY(QString problem READ problem NOTIFY problemChanged)
    Q_PROPERTY(QString trouble READ trouble NOTIFY troubleChanged)

  public:
    CalendarsModel(MacCalendarService& calendars, CompanionState& state, TaskScope& scope);

    RowList* rows() { return &rows_; }

    [[nodiscard]] QVariantList writers() const;
    [[nodiscard]] int writerIndex() const;

    /// Why the calendars are not known.
    [[nodiscard]] QString problem() const;

    /// Why the last choice could not be made, or that the settings are not saved.
    [[nodiscard]] QString trouble() const { return trouble_.text(); }

    /// Allowing takes effect, and shows, once it is saved.
    Q_INVOKABLE void setAllowed(const QString& calendar, bool allowed);
    /// An empty id: the calendar that the desktop uses. Another one takes effect, and shows, once it is
    /// saved.
    Q_INVOKABLE void setWriter(const QString& calendar);

  Q_SIGNALS:
    void writersChanged();
    void writerIndexChanged();
    void problemChanged();
    void troubleChanged();

  private:
    [[nodiscard]] QVariantList readRows() const;
    [[nodiscard]] std::vector<CalendarOption> writable() const;
    Task<void> note(Task<Result<void>> choice);

    MacCalendarService& calendars_;
    TaskScope& scope_;
    SwitchTrouble trouble_;
    RowList rows_;
};

} // namespace morvex
