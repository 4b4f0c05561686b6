#pragma once

#include "app/organizer/CallLimit.h"
#include "foundation/Clock.h"
#include "foundation/Signal.h"
#include "foundation/Task.h"
#include "platform/ports/PersonalDataStore.h"
#include "shared/base/Sentence.h"

#include <functional>
#include <optional>
#include <stop_token>

namespace morvex {

/// Whether a store of the user's data may be used, and why not. Part of the service over that store; main
/// thread only. The owner ends all tasks before it destroys this object.
class PersonalAccess {
  public:
    /// What the system may take for an answer that needs no person.
    static constexpr auto patience = CallLimit::longest;

    /// Both outlive this object.
    PersonalAccess(PersonalDataStore& store, Clock& clock);

    [[nodiscard]] DataAccess status() const { return store_.access(); }

    [[nodiscard]] bool isFull() const { return status() == DataAccess::full; }

    /// Why the last request failed, or what followed it.
    [[nodiscard]] const std::optional<Sentence>& error() const { return error_; }

    void setError(std::optional<Sentence> error);

    /// Asks, whatever was said before.
    Task<void> request(std::stop_token stop);

    /// Asks where nobody has decided yet or the data was out of reach; an answer that stands ends the error
    /// before it.
    Task<void> ensure(std::stop_token stop);

    /// The same, where it opens no question to the user.
    Task<void> look(std::stop_token stop);

    /// For views: called when `status` or `error` may have changed.
    [[nodiscard]] Connection onChange(std::function<void()> call) {
        return changed_.connect(std::move(call));
    }

  private:
    [[nodiscard]] bool isOpen() const;
    Task<void> ask(std::stop_token stop);

    PersonalDataStore& store_;
    Clock& clock_;
    std::optional<Sentence> error_;
    Signal<> changed_;
    Connection storeChanged_;
};

} // namespace morvex
