#pragma once

#include "platform/linux/evolution/EvolutionService.h"
#include "platform/ports/ReminderStore.h"

namespace morvex {

/// The task lists of the desktop, by its service. A task that recurs is listed once, with its next time.
/// Cancelled ones are left out.
class EvolutionReminderStore final : public EvolutionStore<ReminderStore> {
  public:
    using EvolutionStore::EvolutionStore;

    /// No desktop watches where the computer is.
    [[nodiscard]] bool ringsAtPlaces() const override { return false; }

    Task<Result<std::vector<ReminderList>>> lists(std::stop_token stop) override;
    Task<Result<std::optional<std::string>>> defaultList(std::stop_token stop) override;
    Task<Result<std::vector<Reminder>>> reminders(bool includeCompleted, std::stop_token stop) override;
    Task<Result<std::string>> create(NewReminder reminder, std::stop_token stop) override;
    Task<Result<std::optional<Reminder>>> complete(std::string id, std::stop_token stop) override;
};

} // namespace morvex
