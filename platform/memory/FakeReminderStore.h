#pragma once

#include "platform/memory/FakePersonalData.h"
#include "platform/ports/ReminderStore.h"
#include "shared/base/Try.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace morvex {

/// Reminders in memory.
class FakeReminderStore final : public FakePersonalData<ReminderStore> {
  public:
    [[nodiscard]] bool ringsAtPlaces() const override { return rings; }

    Task<Result<std::vector<ReminderList>>> lists(std::stop_token stop) override {
        CO_CHECK(co_await begin(std::move(stop)));
        co_return has;
    }

    Task<Result<std::optional<std::string>>> defaultList(std::stop_token stop) override {
        CO_CHECK(co_await begin(std::move(stop)));
        co_return usual;
    }

    Task<Result<std::vector<Reminder>>> reminders(bool includeCompleted, std::stop_token stop) override {
        CO_CHECK(co_await begin(std::move(stop)));
        auto listed = held;
        std::erase_if(listed,
                      [=](const Reminder& reminder) { return reminder.completed && !includeCompleted; });
        co_return listed;
    }

    Task<Result<std::string>> create(NewReminder reminder, std::stop_token stop) override {
        CO_CHECK(co_await begin(std::move(stop)));
        created.push_back(std::move(reminder));
        co_return "new";
    }

    Task<Result<std::optional<Reminder>>> complete(std::string id, std::stop_token stop) override {
        CO_CHECK(co_await begin(std::move(stop)));
        const auto found = std::ranges::find(held, id, &Reminder::id);
        if (found == held.end()) co_return std::nullopt;
        found->completed = true;
        co_return std::optional(*found);
    }

    bool rings = false;
    std::vector<ReminderList> has;
    std::optional<std::string> usual; ///< the id of the default list
    std::vector<Reminder> held;
    std::vector<NewReminder> created;
};

} // namespace morvex
