#pragma once

#include "foundation/OneShot.h"
#include "foundation/Signal.h"
#include "platform/ports/PersonalDataStore.h"

#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace morvex {

/// What the fakes of calendars, reminders and contacts have in common. Access is there unless a test takes
/// it.
template <class Store> class FakePersonalData : public Store {
  public:
    [[nodiscard]] DataAccess access() const override { return given; }

    [[nodiscard]] bool asksUser() const override { return asksPerson; }

    Task<Result<void>> requestAccess(std::stop_token stop) override {
        ++requests;
        if (requestHangs) co_await untilStopped(stop);
        if (stop.stop_requested()) co_return fail(TextError("zrušeno"));
        given = givenWhenAsked.value_or(given);
        if (requestFailure) co_return fail(*requestFailure);
        co_return Result<void>{};
    }

    [[nodiscard]] Connection onChange(std::function<void()> slot) override {
        return changed.connect(std::move(slot));
    }

    /// Lets the operations that hang go on.
    void goOn() {
        hangs = false;
        for (const auto& each : std::exchange(held_, {})) each->answer(true);
    }

    DataAccess given = DataAccess::full;
    bool asksPerson = false;
    std::optional<DataAccess> givenWhenAsked; ///< what a request changes the access to
    std::optional<TextError> requestFailure;
    bool requestHangs = false;
    int requests = 0;
    bool hangs = false;               ///< operations wait for `goOn` or for their stop
    std::optional<TextError> failure; ///< makes every operation fail
    int operations = 0;
    Signal<> changed;

  protected:
    /// Begins an operation.
    Task<Result<void>> begin(std::stop_token stop) {
        ++operations;
        if (hangs) co_await untilStopped(stop);
        if (stop.stop_requested()) co_return fail(TextError("zrušeno"));
        if (failure) co_return fail(*failure);
        co_return Result<void>{};
    }

  private:
    Task<void> untilStopped(std::stop_token stop) {
        auto shot = std::make_shared<OneShot<bool>>();
        held_.push_back(shot);
        const std::stop_callback stopped(stop, [shot] { shot->answer(false); });
        co_await shot->wait();
    }

    std::vector<std::shared_ptr<OneShot<bool>>> held_;
};

} // namespace morvex
