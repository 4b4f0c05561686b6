#include "app/ui/models/CalendarsModel.h"

#include "app/ui/Localized.h"

#include <QVariantMap>

#include <algorithm>
#include <utility>

namespace morvex {

CalendarsModel::CalendarsModel(MacCalendarService& calendars, CompanionState& state, TaskScope& scope)
    : calendars_(calendars),
      scope_(scope),
      trouble_(state.settingsTrouble, [this] { refresh(); }),
      rows_(*this, [this] { return readRows(); }) {
    follow(calendars_.onRowsChange([this] { refresh(); }));
}

QVariantList CalendarsModel::readRows() const {
    QVariantList rows;
    const CalendarOption* before = nullptr;
    for (const auto& option : calendars_.options()) {
        const bool beginsAccount = before == nullptr || before->account != option.account;
        rows.push_back(QVariantMap{{QStringLiteral("id"), QString::fromStdString(option.id)},
                                   {QStringLiteral("name"), QString::fromStdString(option.name)},
                                   {QStringLiteral("account"), QString::fromStdString(option.account)},
                                   {QStringLiteral("beginsAccount"), beginsAccount},
                                   {QStringLiteral("writable"), option.writable},
                                   {QStringLiteral("allowed"), calendars_.isEnabled(option.id)}});
        before = &option;
    }
    return rows;
}

std::vector<CalendarOption> CalendarsModel::writable() const {
    auto calendars = calendars_.enabledCalendars();
    std::erase_if(calendars, [](const CalendarOption& calendar) { return !calendar.writable; });
    return calendars;
}

QVariantList CalendarsModel::writers() const {
    QVariantList writers{QVariantMap{{QStringLiteral("name"), localized("Automaticky"_sentence)},
                                     {QStringLiteral("calendar"), QString()}}};
    const auto calendars = writable();
    for (const auto& calendar : calendars) {
        const bool isAmbiguous = std::ranges::count(calendars, calendar.name, &CalendarOption::name) > 1;
        const auto name = isAmbiguous ? calendar.name + " · " + calendar.account : calendar.name;
        writers.push_back(QVariantMap{{QStringLiteral("name"), QString::fromStdString(name)},
                                      {QStringLiteral("calendar"), QString::fromStdString(calendar.id)}});
    }
    return writers;
}

int CalendarsModel::writerIndex() const {
    const auto& chosen = calendars_.writeCalendarID();
    if (!chosen) return 0;
    const auto calendars = writable();
    const auto place = std::ranges::find(calendars, *chosen, &CalendarOption::id);
    return place == calendars.end() ? 0 : static_cast<int>(place - calendars.begin()) + 1;
}

QString CalendarsModel::problem() const {
    if (calendars_.accessError()) return localized(*calendars_.accessError());
    if (calendars_.authorizationStatus() != DataAccess::full) return localized(calendars_.statusText());
    return {};
}

void CalendarsModel::setAllowed(const QString& calendar, bool allowed) {
    scope_.spawn(note(calendars_.setCalendarEnabled(calendar.toStdString(), allowed)));
}

void CalendarsModel::setWriter(const QString& calendar) {
    if (calendar.isEmpty()) return calendars_.clearWriteCalendar();
    scope_.spawn(note(calendars_.setWriteCalendar(calendar.toStdString())));
}

Task<void> CalendarsModel::note(Task<Result<void>> choice) {
    trouble_.note(co_await std::move(choice));
}

} // namespace morvex
