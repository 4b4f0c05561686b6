#include "app/organizer/RemindersTools.h"

#include "app/organizer/AnswerList.h"
#include "app/organizer/DateArgument.h"
#include "shared/wire/MacToolName.h"

namespace morvex {

struct RemindersWanted {
    std::optional<bool> includeCompleted;
};

void describe(auto& io, Is<RemindersWanted> auto& wanted) {
    io.optional("include_completed", wanted.includeCompleted);
}

struct ReminderArguments {
    std::string title;
    std::optional<std::string> due;
    std::optional<std::string> list;
    std::optional<std::string> location;
    std::optional<std::string> proximity;
};

void describe(auto& io, Is<ReminderArguments> auto& reminder) {
    io.required("title", reminder.title);
    io.optional("due", reminder.due);
    io.optional("list", reminder.list);
    io.optional("location", reminder.location);
    io.optional("proximity", reminder.proximity);
}

struct ReminderDone {
    std::optional<std::string> id;
};

void describe(auto& io, Is<ReminderDone> auto& done) {
    io.required("id", done.id);
}

namespace {

boost::json::object entry(const Reminder& reminder) {
    boost::json::object entry{{"id", reminder.id},
                              {"title", reminder.title},
                              {"completed", reminder.completed},
                              {"list", reminder.list}};
    if (reminder.due) entry.emplace("due", formatAnyDate(*reminder.due));
    return entry;
}

} // namespace

void RemindersTools::addTo(ToolTable& table, const std::function<bool()>& isOn) {
    table.add(MacToolName::remindersList, isOn, this, &RemindersTools::list);
    table.add(MacToolName::remindersCreate, isOn, this, &RemindersTools::create);
    table.add(MacToolName::remindersComplete, isOn, this, &RemindersTools::complete);
}

Task<ToolOutcome> RemindersTools::list(RemindersWanted wanted, ToolCall call) {
    const bool includeCompleted = wanted.includeCompleted.value_or(false);
    const auto reminders =
        co_await limit_.run(std::move(call.abandonment), [this, includeCompleted](std::stop_token stop) {
            return reminders_.list(includeCompleted, std::move(stop));
        });
    if (!reminders) co_return ToolOutcome::refused(reminders.error());
    AnswerList entries;
    for (const auto& reminder : *reminders) entries.add(entry(reminder));
    co_return std::move(entries).outcome("reminders");
}

Task<ToolOutcome> RemindersTools::create(ReminderArguments reminder, ToolCall call) {
    if (reminder.title.empty()) co_return ToolOutcome::refused("Chybí název připomínky.");
    std::optional<Date> due;
    if (reminder.due) due = parseDate(*reminder.due, BareDay::itsStart, localTime_.zone());
    ReminderToCreate wanted{.title = reminder.title,
                            .due = due,
                            .location = resolvePlace_(std::move(reminder.location)),
                            .arrive = reminder.proximity != "leave",
                            .listName = std::move(reminder.list)};
    const auto id = co_await limit_.run(std::move(call.abandonment), [&](std::stop_token stop) {
        return reminders_.createReminder(std::move(wanted), std::move(stop));
    });
    if (!id) co_return ToolOutcome::refused(id.error());
    co_return ToolOutcome::done({{"created", true}, {"id", *id}, {"title", reminder.title}});
}

Task<ToolOutcome> RemindersTools::complete(ReminderDone done, ToolCall call) {
    if (!done.id) co_return ToolOutcome::refused("Chybí identifikátor připomínky.");
    const auto completed = co_await limit_.run(std::move(call.abandonment), [&](std::stop_token stop) {
        return reminders_.completeReminder(*done.id, std::move(stop));
    });
    if (!completed) co_return ToolOutcome::refused(completed.error());
    co_return ToolOutcome::done({{"completed", true}, {"id", *done.id}, {"title", completed->title}});
}

} // namespace morvex
