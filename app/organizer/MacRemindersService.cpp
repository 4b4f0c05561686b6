#include "app/organizer/MacRemindersService.h"

#include "foundation/Text.h"
#include "shared/base/Try.h"

#include <algorithm>

namespace morvex {

using Case = PersonalServiceError::Case;

namespace {

std::unexpected<Error> refuse(Case why) {
    return fail(PersonalServiceError{why});
}

} // namespace

Sentence MacRemindersService::statusText() const {
    switch (authorizationStatus()) {
    case DataAccess::notDetermined:
        return "Připomínky čekají na povolení"_sentence;
    case DataAccess::restricted:
        return "Přístup k připomínkám je systémem omezený"_sentence;
    case DataAccess::denied:
        return "Přístup k připomínkám byl zamítnut"_sentence;
    case DataAccess::full:
        return "Připomínky jsou připojené"_sentence;
    case DataAccess::writeOnly:
        return "Připomínky jsou povolené pouze pro zápis"_sentence;
    case DataAccess::unknown:
        return "Stav připomínek není známý"_sentence;
    }
    std::unreachable();
}

Task<Result<void>> MacRemindersService::ensureAccess(std::stop_token stop) {
    co_await access_.ensure(std::move(stop));
    if (!access_.isFull()) co_return refuse(Case::remindersAccess);
    co_return Result<void>{};
}

Task<Result<std::vector<Reminder>>> MacRemindersService::list(bool includeCompleted, std::stop_token stop) {
    CO_CHECK(co_await ensureAccess(stop));
    co_return co_await services_.store.reminders(includeCompleted, std::move(stop));
}

Task<Result<std::string>> MacRemindersService::createReminder(ReminderToCreate reminder,
                                                              std::stop_token stop) {
    CO_CHECK(co_await ensureAccess(stop));
    CO_TRY(auto, alarm, co_await alarmAt(trim(reminder.location.value_or("")), reminder.arrive, stop));
    CO_TRY(auto, list, co_await listFor(std::move(reminder.listName), stop));
    co_return co_await services_.store.create(
        {std::move(reminder.title), reminder.due, std::move(alarm), std::move(list)}, std::move(stop));
}

Task<Result<std::optional<PlaceAlarm>>> MacRemindersService::alarmAt(std::string location, bool arrive,
                                                                     std::stop_token stop) {
    if (location.empty()) co_return std::optional<PlaceAlarm>();
    auto found = co_await services_.places.find(location, std::move(stop));
    if (!found || !*found) co_return refuse(Case::locationNotFound);
    PlaceAlarm alarm{.place = **std::move(found), .onArrival = arrive};
    if (alarm.place.name.empty()) alarm.place.name = std::move(location);
    co_return std::optional(std::move(alarm));
}

Task<Result<std::string>> MacRemindersService::listFor(std::optional<std::string> name,
                                                       std::stop_token stop) {
    CO_TRY(auto, lists, co_await services_.store.lists(stop));
    std::erase_if(lists, [](const ReminderList& list) { return !list.writable; });
    auto found = lists.end();
    if (name)
        found =
            std::ranges::find(lists, fold(*name), [](const ReminderList& list) { return fold(list.name); });
    if (found == lists.end()) {
        CO_TRY(const auto, id, co_await services_.store.defaultList(std::move(stop)));
        if (id) found = std::ranges::find(lists, *id, &ReminderList::id);
    }
    if (found == lists.end()) co_return refuse(Case::noReminderList);
    co_return std::move(found->id);
}

Task<Result<Reminder>> MacRemindersService::completeReminder(std::string id, std::stop_token stop) {
    CO_CHECK(co_await ensureAccess(stop));
    CO_TRY(auto, completed, co_await services_.store.complete(std::move(id), std::move(stop)));
    if (!completed) co_return refuse(Case::reminderNotFound);
    co_return *std::move(completed);
}

} // namespace morvex
