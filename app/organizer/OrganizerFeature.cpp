#include "app/organizer/OrganizerFeature.h"

#include "app/features/FeatureContext.h"

#include <utility>

namespace morvex {

namespace {

CallLimit limitOf(const FeatureContext& context) {
    return {context.clock(), context.scope.token()};
}

} // namespace

OrganizerFeature::OrganizerFeature(FeatureContext& context, RemindersTools::ResolvePlace resolvePlace)
    : Feature(context),
      context_(context),
      calendar_({context.services.calendars, context.services.defaults, context.clock()}),
      reminders_({context.services.reminders, context.services.places, context.clock()}),
      contacts_({context.services.contacts, context.clock()}),
      calendarTools_(calendar_, context.services.localTime, limitOf(context)),
      remindersTools_(reminders_, context.services.localTime, std::move(resolvePlace), limitOf(context)),
      contactsTools_(contacts_, limitOf(context)) {
    calendarTools_.addTo(context.tools, context.whileOn(Integration::calendar));
    remindersTools_.addTo(context.tools, context.whileOn(Integration::reminders));
    contactsTools_.addTo(context.tools, context.whileOn(Integration::contacts));
    choiceChanged_ = calendar_.onChange([&context] { context.scope.spawn(context.poslatStav()); });
    storeChanged_ = context.services.calendars.onChange([this] { storeChanged(); });
}

Task<void> OrganizerFeature::prepare() {
    if (context_.scope.token().stop_requested()) co_return;
    auto ended = std::make_shared<FirstLook>();
    auto& clock = context_.clock();
    const auto timer = clock.at(clock.sinceBoot() + patience, [ended] { ended->answer(false); });
    context_.scope.spawn(firstLook(ended));
    co_await ended->wait();
    clock.forget(timer);
}

Task<void> OrganizerFeature::firstLook(std::shared_ptr<FirstLook> ended) {
    co_await look();
    const bool isInTime = ended->answer(true);
    if (!isInTime) co_await context_.poslatStav();
}

Task<void> OrganizerFeature::refresh() {
    return look();
}

Task<void> OrganizerFeature::look() {
    const LimitedStop limited(context_.clock(), PersonalAccess::patience, context_.scope.token());
    TaskScope looks(context_.services.main);
    looks.spawn(calendar_.refresh(limited.token()));
    looks.spawn(reminders_.refresh(limited.token()));
    looks.spawn(contacts_.refresh(limited.token()));
    co_await looks.join();
}

void OrganizerFeature::storeChanged() {
    hasChangedAgain_ = true;
    if (!std::exchange(isReloading_, true)) context_.scope.spawn(reload());
}

Task<void> OrganizerFeature::reload() {
    while (std::exchange(hasChangedAgain_, false)) {
        const LimitedStop limited(context_.clock(), PersonalAccess::patience, context_.scope.token());
        co_await calendar_.reload(limited.token());
    }
    isReloading_ = false;
    co_await context_.poslatStav();
}

} // namespace morvex
